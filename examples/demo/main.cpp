// The demo host: starts the editor's application object and its registries the way the editor
// does, shows what it worked out, builds a menu bar and a tool group from the registries, and
// shuts down in the editor's order.

#include <KXExportResolutions.h>
#include <KXExportSizes.h>
#include <OVActivateAction.h>
#include <OVAdjustmentManager.h>
#include <OVApplication.h>
#include <OVBrushToolManager.h>
#include <OVImageFileManager.h>
#include <OVMenuManager.h>
#include <OVRecentManager.h>
#include <OVToolBarManager.h>
#include <OVToolGroupManager.h>
#include <OVToolWidgetManager.h>

#include <QAction>
#include <QDateTime>
#include <QMenu>
#include <QMenuBar>
#include <QTextStream>

#include <memory>

namespace {

// Each registry's InitInstance, and its ReleaseInstance for shutdown.
struct Registry
{
    void (*init)();
    void (*release)();
};

const Registry kRegistries[] = {
    {&OVImageFileManager::InitInstance, &OVImageFileManager::ReleaseInstance},
    {&OVAdjustmentManager::InitInstance, &OVAdjustmentManager::ReleaseInstance},
    {&OVBrushToolManager::InitInstance, &OVBrushToolManager::ReleaseInstance},
    {&OVMenuManager::InitInstance, &OVMenuManager::ReleaseInstance},
    {&OVRecentManager::InitInstance, &OVRecentManager::ReleaseInstance},
    {&OVToolBarManager::InitInstance, &OVToolBarManager::ReleaseInstance},
    {&OVToolWidgetManager::InitInstance, &OVToolWidgetManager::ReleaseInstance},
    {&OVToolGroupManager::InitInstance, &OVToolGroupManager::ReleaseInstance},
};

// The menu bar as one line: "File: Open, Save | Help: About".
QString Describe(const QMenuBar& bar)
{
    QStringList menus;
    for (QAction* menu : bar.actions()) {
        QStringList entries;
        for (QAction* entry : menu->menu()->actions())
            entries << entry->text();
        menus << menu->text() + QStringLiteral(": ") + entries.join(QStringLiteral(", "));
    }
    return menus.join(QStringLiteral(" | "));
}

} // namespace

int main(int argc, char** argv)
{
    OVApplication app(argc, argv);
    QTextStream out(stdout);

    out << "Data folder:      " << OVApplication::GetDataFolder() << '\n';
    out << "User data folder: " << OVApplication::GetUserDataFolder() << '\n';
    out << "Resource folder:  " << OVApplication::GetResourcePath() << '\n';

    // A settings round trip through "user.ini".
    const QString stamp = QDateTime::currentDateTime().toString(Qt::ISODate);
    OVApplication::SetUserValue(QStringLiteral("Demo/LastRun"), stamp);
    out << "Settings round trip: wrote " << stamp << ", read "
        << OVApplication::GetUserValue(QStringLiteral("Demo/LastRun")).toString() << " (user.ini version "
        << OVApplication::GetUserValue(OVApplication::Version).toString() << ")\n";

    for (const Registry& registry : kRegistries)
        registry.init();

    // Contributors enter menus and entries in any order; the bar shows them by role and id.
    std::unique_ptr<QMenu> help(OVMenuManager::CreateMenu(OVMenuManager::Help, QStringLiteral("Help")));
    OVMenuManager::CreateAction(OVMenuManager::Help, 10)->setText(QStringLiteral("About"));
    std::unique_ptr<QMenu> file(OVMenuManager::CreateMenu(OVMenuManager::File, QStringLiteral("File")));
    OVMenuManager::CreateAction(OVMenuManager::File, 20)->setText(QStringLiteral("Save"));
    OVMenuManager::CreateAction(OVMenuManager::File, 10)->setText(QStringLiteral("Open"));
    QMenuBar bar;
    OVMenuManager::Setup(&bar);
    out << "Menu bar: " << Describe(bar) << '\n';

    // Two tools in one group: choosing the second unchecks the first.
    OVActivateAction brush;
    OVActivateAction eraser;
    OVToolGroupManager::Add(&brush, QStringLiteral("tool.brush"));
    OVToolGroupManager::Add(&eraser, QStringLiteral("tool.eraser"));
    OVToolGroupManager::Activate(&brush);
    OVToolGroupManager::Activate(&eraser);
    out << "Chosen tool: " << OVToolGroupManager::GetExplicitToolUID()
        << " (brush checked: " << (brush.IsChecked() ? "yes" : "no") << ")\n";

    // The recent files survive restarts: each run adds this program to them.
    OVRecentManager::GetInstance()->PushRecent(QCoreApplication::applicationFilePath());
    out << "Recent files: " << OVRecentManager::GetInstance()->GetRecents().join(QStringLiteral(", "))
        << '\n';
    out << "Export lists: " << KXExportResolutions::GetSize() << " resolutions, " << KXExportSizes::GetSize()
        << " sizes\n";

    for (const Registry& registry : kRegistries)
        registry.release();
    return 0;
}
