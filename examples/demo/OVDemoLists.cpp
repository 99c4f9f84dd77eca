#include "OVDemoLists.h"

#include "KXExportResolutions.h"
#include "KXExportSizes.h"
#include "OVMenuManager.h"
#include "OVRecentManager.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLocale>
#include <QMenu>

namespace {

QString Tr(const char* text)
{
    return QCoreApplication::translate("OVDemoLists", text);
}

void Fill(QMenu* menu, const std::function<void(const QString&)>& open)
{
    menu->clear();
    OVRecentManager* recent = OVRecentManager::GetInstance();
    if (!recent)
        return;
    const QStringList favourites = recent->GetFavorites();
    const QStringList recents = recent->GetRecents();
    for (const QString& path : favourites)
        menu->addAction(QStringLiteral("\u2605 ") + QFileInfo(path).fileName(), menu,
                        [open, path] { open(path); })
            ->setToolTip(path);
    if (!favourites.isEmpty() && !recents.isEmpty())
        menu->addSeparator();
    for (const QString& path : recents)
        menu->addAction(QFileInfo(path).fileName(), menu, [open, path] { open(path); })->setToolTip(path);
    if (favourites.isEmpty() && recents.isEmpty())
        menu->addAction(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "No recent files")))->setEnabled(false);
}

} // namespace

namespace OVDemoLists {

void AddFileEntries(int recentId, int favouriteId, std::function<void(const QString&)> open,
                    std::function<QString()> current)
{
    if (QMenu* menu = OVMenuManager::CreateMenu(OVMenuManager::File, recentId)) {
        menu->setTitle(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "Open &Recent")));
        menu->setToolTipsVisible(true);
        QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, open] { Fill(menu, open); });
        Fill(menu, open);
    }
    QAction* favourite = OVMenuManager::CreateAction(OVMenuManager::File, favouriteId);
    if (!favourite)
        return;
    favourite->setText(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "&Favourite")));
    favourite->setCheckable(true);
    favourite->setShortcut(QKeySequence(QStringLiteral("Ctrl+D")));
    // Kept up to date whenever the File menu opens.
    QMenu* file = qobject_cast<QMenu*>(favourite->parent());
    if (file) {
        QObject::connect(file, &QMenu::aboutToShow, favourite, [favourite, current] {
            OVRecentManager* recent = OVRecentManager::GetInstance();
            const QString path = current();
            favourite->setEnabled(recent && !path.isEmpty());
            favourite->setChecked(recent && recent->IsFavorite(path));
        });
    }
    QObject::connect(favourite, &QAction::triggered, favourite, [favourite, current](bool star) {
        OVRecentManager* recent = OVRecentManager::GetInstance();
        const QString path = current();
        if (!recent || path.isEmpty())
            return;
        if (star)
            recent->PushFavorite(path);
        else if (recent->IsFavorite(path))
            recent->Remove(path);
        // The favourites are full: nothing moved.
        favourite->setChecked(recent->IsFavorite(path));
    });
}

bool AskExportOptions(QWidget* parent, ExportOptions* options)
{
    QDialog dialog(parent);
    dialog.setWindowTitle(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "Export options")));
    QFormLayout* form = new QFormLayout(&dialog);
    QComboBox* resolutions = new QComboBox(&dialog);
    resolutions->addItem(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "As it is")), QSize());
    for (const QSize& size : KXExportResolutions::GetList())
        resolutions->addItem(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height()), size);
    form->addRow(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "Fit into:")), resolutions);
    QComboBox* sizes = new QComboBox(&dialog);
    sizes->addItem(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "Any")), qint64(0));
    for (const qint64 bytes : KXExportSizes::GetList())
        sizes->addItem(QLocale().formattedDataSize(bytes), bytes);
    form->addRow(Tr(QT_TRANSLATE_NOOP("OVDemoLists", "Largest file:")), sizes);
    QDialogButtonBox* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    form->addRow(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    options->resolution = resolutions->currentData().toSize();
    options->maxBytes = sizes->currentData().toLongLong();
    return true;
}

QImage Fit(const QImage& image, const QSize& resolution)
{
    if (!resolution.isValid() ||
        (image.width() <= resolution.width() && image.height() <= resolution.height()))
        return image;
    return image.scaled(resolution, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace OVDemoLists
