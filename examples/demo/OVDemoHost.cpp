#include "OVDemoHost.h"

#include "OVDemoStatistics.h"

#include "OVDemoLook.h"

#include "OVDemoColour.h"

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "OVApplication.h"
#include "OVBrushToolManager.h"
#include "OVCMSManager.h"
#include "OVImageFileManager.h"
#include "OVImageFileWriter.h"
#include "OVRecentManager.h"
#include "OVToolBarManager.h"
#include "OVToolGroupManager.h"
#include "OVToolWidgetManager.h"

#include "KXDocumentInterface.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMenu>

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
    // Reads its lists from "user.ini" when made and writes them back when released.
    {&OVRecentManager::InitInstance, &OVRecentManager::ReleaseInstance},
    {&OVToolBarManager::InitInstance, &OVToolBarManager::ReleaseInstance},
    {&OVToolWidgetManager::InitInstance, &OVToolWidgetManager::ReleaseInstance},
    {&OVToolGroupManager::InitInstance, &OVToolGroupManager::ReleaseInstance},
};

// The host's top-level menus. They exist before the plug-ins load, so that plug-ins can put
// their entries into them.
struct MenuDefinition
{
    OVMenuManager::MenuRole role;
    const char* title;
};

const MenuDefinition kMenus[] = {
    {OVMenuManager::File, QT_TRANSLATE_NOOP("OVDemoHost", "&File")},
    {OVMenuManager::Edit, QT_TRANSLATE_NOOP("OVDemoHost", "&Edit")},
    {OVMenuManager::Image, QT_TRANSLATE_NOOP("OVDemoHost", "&Image")},
    {OVMenuManager::Filter, QT_TRANSLATE_NOOP("OVDemoHost", "Fil&ter")},
    {OVMenuManager::View, QT_TRANSLATE_NOOP("OVDemoHost", "&View")},
    {OVMenuManager::Help, QT_TRANSLATE_NOOP("OVDemoHost", "&Help")},
};

// The document the save hook writes: a flattened image and where it goes.
class OVDemoDocument : public KXDocumentInterface
{
public:
    OVDemoDocument(const QImage& image, const QString& path)
        : m_image(image)
        , m_path(path)
    {}

    QString GetFilePath() const override { return m_path; }
    void SetFilePath(const QString& path) override { m_path = path; }
    QImage GetImage() const override { return m_image; }
    bool IsModified() const override { return m_modified; }
    void SetModified(bool modified) override { m_modified = modified; }

private:
    QImage m_image;
    QString m_path;
    bool m_modified = true;
};

} // namespace

OVDemoHost::OVDemoHost(QObject* parent)
    : QObject(parent)
{}

OVDemoHost::~OVDemoHost()
{
    Stop();
}

void OVDemoHost::Start()
{
    if (m_started)
        return;
    m_started = true;
    for (const Registry& registry : kRegistries)
        registry.init();
    OVDemoColour::InitInstance();

    for (const MenuDefinition& definition : kMenus) {
        QMenu* menu = OVMenuManager::CreateMenu(definition.role, QString());
        m_menus[definition.role].reset(menu);
    }
    RetitleMenus();

    OVApplication* app = OVApplication::GetInstance();
    connect(app, &OVApplication::PluginLoading, this, [this](const QString& file) {
        emit Status(tr("Loading %1...").arg(QFileInfo(file).completeBaseName()));
    });
    connect(app, &OVApplication::PluginLoaded, this, [this](const QString& file) { m_loaded << file; });
    connect(app, &OVApplication::PluginLoadingError, this, [this](const QString& file, const QString& error) {
        emit Status(tr("%1 did not load: %2").arg(QFileInfo(file).completeBaseName(), error));
    });
    OVApplication::LoadPlugins();

    OVImageFileManager::InitReadersPool();
    OVImageFileManager* files = OVImageFileManager::GetInstance();
    files->Register(&OVDemoHost::OpenHook, this);
    files->Register(&OVDemoHost::SaveHook, this);
    OVDemoLook::Load();
    RetitleMenus();
}

void OVDemoHost::UIReady()
{
    OVApplication::UIReady();
    OVDemoStatistics::Started();
}

void OVDemoHost::Stop()
{
    if (!m_started)
        return;
    m_started = false;
    if (OVImageFileManager* files = OVImageFileManager::GetInstance()) {
        files->Register(OVImageFileManager::OpenHook(nullptr), nullptr);
        files->Register(OVImageFileManager::SaveHook(nullptr), nullptr);
    }
    OVImageFileManager::ReleaseReadersPool();
    // Plug-ins write what they still hold before they go.
    OVApplication::FlushData();
    OVApplication::UnloadPlugins();
    for (const Registry& registry : kRegistries)
        registry.release();
    OVCMSManager::ReleaseInstance();
    m_menus.clear();
}

QMenu* OVDemoHost::Menu(OVMenuManager::MenuRole role) const
{
    const auto found = m_menus.find(role);
    return found == m_menus.end() ? nullptr : found->second.get();
}

QStringList OVDemoHost::FailedPlugins() const
{
    QStringList failed;
    for (const QString& file : OVApplication::GetErrorPlugins())
        failed << file + QStringLiteral(": ") + OVApplication::GetErrorInfo(file);
    return failed;
}

QString OVDemoHost::PluginSummary() const
{
    QStringList names;
    for (const QString& file : m_loaded)
        names << QFileInfo(file).completeBaseName();
    return tr("Plug-ins: %1 loaded (%2), %3 failed")
        .arg(m_loaded.size())
        .arg(names.join(QStringLiteral(", ")))
        .arg(FailedPlugins().size());
}

bool OVDemoHost::ParseAdjustment(const QString& text, OVDemoAdjustment* adjustment, QString* error)
{
    const QString name = text.section(QLatin1Char('='), 0, 0).trimmed();
    const bool hasValue = text.contains(QLatin1Char('='));
    bool numeric = false;
    const int value = text.section(QLatin1Char('='), 1).trimmed().toInt(&numeric);
    if (hasValue && !numeric) {
        *error = tr("The value of \"%1\" is not a whole number.").arg(name);
        return false;
    }
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    const QStringList ids = registry ? registry->GetRegistered() : QStringList();
    for (const QString& id : ids) {
        const OVAdjustment* candidate = registry->GetAdjustment(id);
        if (!candidate)
            continue;
        const QStringList parameters = candidate->property("parameters").toStringList();
        if (hasValue ? parameters.contains(name) : candidate->objectName() == name) {
            adjustment->uid = id;
            adjustment->parameters.clear();
            if (hasValue)
                adjustment->parameters.insert(name, value);
            return true;
        }
    }
    *error = tr("No adjustment takes \"%1\".").arg(name);
    return false;
}

QImage OVDemoHost::Apply(const QImage& image, const QList<OVDemoAdjustment>& steps)
{
    QImage result = image;
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    for (const OVDemoAdjustment& step : steps) {
        if (const OVAdjustment* adjustment = registry ? registry->GetAdjustment(step.uid) : nullptr)
            result = adjustment->Apply(result, step.parameters);
    }
    return result;
}

bool OVDemoHost::Write(const QImage& image, const QString& path, QString* error)
{
    OVDemoDocument document(image, path);
    m_saveError.clear();
    const bool saved =
        OVImageFileManager::GetInstance() && OVImageFileManager::GetInstance()->Save(&document);
    if (!saved && error)
        *error = m_saveError.isEmpty() ? tr("The image could not be saved.") : m_saveError;
    return saved;
}

bool OVDemoHost::OpenHook(const QString& path, bool*, void* data)
{
    emit static_cast<OVDemoHost*>(data)->OpenRequested(path);
    return true;
}

bool OVDemoHost::SaveHook(KXDocumentInterface* document, void* data)
{
    OVDemoHost* host = static_cast<OVDemoHost*>(data);
    const QString path = document->GetFilePath();
    const QString format = QFileInfo(path).suffix().toLower();
    OVImageFileManager* files = OVImageFileManager::GetInstance();
    OVImageFileWriter* writer = files->CreateWriter(format);
    if (!writer) {
        host->m_saveError = tr("No writer for the format \"%1\".").arg(format);
        return false;
    }
    const bool written = writer->Write(path, document->GetImage());
    if (!written)
        host->m_saveError = writer->GetErrorString();
    files->ReleaseWriter(writer);
    if (written)
        document->SetModified(false);
    return written;
}

void OVDemoHost::RetitleMenus()
{
    for (const MenuDefinition& definition : kMenus) {
        if (QMenu* menu = Menu(definition.role))
            menu->setTitle(tr(definition.title));
    }
}
