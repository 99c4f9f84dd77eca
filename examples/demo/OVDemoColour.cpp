#include "OVDemoColour.h"

#include "OVApplication.h"
#include "OVCMSManager.h"

#include <QActionGroup>
#include <QColorSpace>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace OVDemoColour {

QString SystemFolder()
{
#ifdef Q_OS_WIN
    const QString root = qEnvironmentVariable("SystemRoot", QStringLiteral("C:\\Windows"));
    return QDir::toNativeSeparators(root + QStringLiteral("/System32/spool/drivers/color"));
#else
    return QStringLiteral("/usr/share/color/icc");
#endif
}

void InitInstance()
{
    OVCMSManager::InitInstance(SystemFolder());
    OVCMSManager* profiles = OVCMSManager::GetInstance();
    bool stored = false;
    const int index = OVApplication::GetUserValue(OVApplication::CMWorkingProfileID).toInt(&stored);
    if (stored && index >= 0 && index < profiles->GetRGBProfileCount())
        profiles->SetWorkingRGBIndex(index);
    QObject::connect(profiles, &OVCMSManager::WorkingRGBIndexChanged, profiles, [](int index) {
        OVApplication::SetUserValue(OVApplication::CMWorkingProfileID, index);
    });
}

void AddMenu(QMenu* view)
{
    OVCMSManager* profiles = OVCMSManager::GetInstance();
    if (!profiles)
        return;
    QMenu* menu = view->addMenu(QCoreApplication::translate("OVDemoColour", "Working &Colour Profile"));
    QActionGroup* group = new QActionGroup(menu);
    const int count = profiles->GetRGBProfileCount();
    for (int i = 0; i < count; ++i) {
        const OVCMSProfile profile = profiles->GetRGBProfile(i);
        QString name = profile.GetDescription();
        if (name.isEmpty())
            name = QFileInfo(profile.GetFilePath()).fileName();
        QAction* action = menu->addAction(name);
        action->setCheckable(true);
        action->setChecked(i == profiles->GetWorkingRGBIndex());
        group->addAction(action);
        QObject::connect(action, &QAction::triggered, menu, [i] {
            if (OVCMSManager* manager = OVCMSManager::GetInstance())
                manager->SetWorkingRGBIndex(i);
        });
    }
    if (count == 0)
        menu->addAction(
                QCoreApplication::translate("OVDemoColour", "No RGB profiles in %1").arg(SystemFolder()))
            ->setEnabled(false);
}

QImage ToWorkingSpace(const QImage& image, QString* error)
{
    OVCMSManager* profiles = OVCMSManager::GetInstance();
    const int index = profiles ? profiles->GetWorkingRGBIndex() : -1;
    if (index < 0 || index >= profiles->GetRGBProfileCount())
        return image;
    const OVCMSProfile profile = profiles->GetRGBProfile(index);
    const QColorSpace working = QColorSpace::fromIccProfile(profile.GetData());
    if (!working.isValid()) {
        if (error)
            *error =
                QCoreApplication::translate("OVDemoColour", "The working profile %1 cannot convert images.")
                    .arg(QFileInfo(profile.GetFilePath()).fileName());
        return QImage();
    }
    QImage result = image;
    if (!result.colorSpace().isValid())
        result.setColorSpace(QColorSpace::SRgb);
    result.convertToColorSpace(working);
    return result;
}

} // namespace OVDemoColour
