#include "private/OVApplication_p.h"

#include "OVApplication.h"
#include "OVPixelRatioRound.h"
#include "private/KXExportResolutions_p.h"
#include "private/KXExportSizes_p.h"
#include "private/OVBuildLog_p.h"
#include "private/OVLanguages_p.h"
#include "private/OVSettingsFile_p.h"

#include <QDir>
#include <QFileInfo>
#include <QProcessEnvironment>

#include "private/OVCoreConfig_p.h"
#include "private/OVScreenTracker_p.h"
#include "private/OVStatisticsClient_p.h"

namespace {

IBrushFactory* s_brushFactory = nullptr;

const QString kProductPath = QStringLiteral("/Tamsendo/Orvelin");
const QString kLocalAppDataPath = QStringLiteral("/AppData/Local");

} // namespace

OVApplicationPrivate::OVApplicationPrivate(OVApplication* owner)
    : owner(owner)
{}

OVApplicationPrivate::~OVApplicationPrivate()
{
    s_brushFactory = nullptr;
    KXExportResolutionsPrivate::Release();
    KXExportSizesPrivate::Release();
    // The plug-in records go without unloading their libraries: unloading is the host's call,
    // and a library unloaded behind its back would take code it may still run with it.

    // Each waits for the post it is sending and drops what is still queued.
    delete configuredClient;
    delete statisticsClient;
    delete screenTracker;
}

void OVApplicationPrivate::Start()
{
    // The statistics clients come first: the events client reads its own configuration, the
    // identification client is given the field name, the endpoint and the key, read in that
    // order.
    statisticsClient = new StatisticsClient;
    const QString identificationField = ReadCoreConfigValue(QStringLiteral("node1/A4"));
    const QString identificationEndpoint = ReadCoreConfigValue(QStringLiteral("node1/A3"));
    const QString apiKey = ReadCoreConfigValue(QStringLiteral("node1/A0"));
    configuredClient = new StatisticsClient(apiKey, identificationEndpoint, identificationField);
    screenTracker = new OVScreenTracker;

    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_DontShowIconsInMenus, true);

    const qreal pixelRatio = owner->devicePixelRatio();
    OV_BUILD_LOG(QStringLiteral("%1").arg(pixelRatio));
    OVPixelRatioRound::SetPixelRatio(pixelRatio);

    KXExportResolutionsPrivate::Create();
    KXExportSizesPrivate::Create();

    // The data folder follows APPDATA when it is set; the user data folder is always the
    // local application data below the home folder.
    const QString appData = QProcessEnvironment::systemEnvironment().value(QStringLiteral("APPDATA"));
    const QString userDataFolder =
        QDir::homePath() + QDir::toNativeSeparators(kLocalAppDataPath + kProductPath);
    const QString dataFolder =
        appData.isEmpty() ? userDataFolder : appData + QDir::toNativeSeparators(kProductPath);

    appIniPath = IniPath(dataFolder, QStringLiteral("app.ini"));
    userIniPath = IniPath(userDataFolder, QStringLiteral("user.ini"));

    // A failure here is not reported: later writes of user values then simply fail.
    QDir().mkpath(userDataFolder);

    translationsDir = QDir(OVApplication::GetResourcePath() + QStringLiteral("/translations")).absolutePath();
    languages = OVLanguages(*this).Scan();
    statisticsEnabled = ReadValue(userIniPath, QStringLiteral("Statistics/Enabled"), true).toBool();

    KXExportResolutionsPrivate::LoadInstance(userDataFolder + KXExportResolutionTable::FileName());
    KXExportSizesPrivate::LoadInstance(userDataFolder + KXExportSizeTable::FileName());
}

OVApplicationPrivate* OVApplicationPrivate::Instance()
{
    OVApplication* app = OVApplication::GetInstance();
    return app ? app->d : nullptr;
}

IBrushFactory* OVApplicationPrivate::BrushFactory()
{
    return s_brushFactory;
}

void OVApplicationPrivate::SetBrushFactory(IBrushFactory* factory)
{
    s_brushFactory = factory;
}

QVariant OVApplicationPrivate::ReadValue(const QString& iniPath, const QString& key, const QVariant& def)
{
    if (key.isEmpty())
        return def;
    return OVSettingsFile::Value(iniPath, key, def);
}

void OVApplicationPrivate::WriteValue(const QString& iniPath, const QString& key, const QVariant& value)
{
    // QSettings ignores an empty key (with a warning); there is nothing to write under it.
    if (key.isEmpty())
        return;
    OVSettingsFile::SetValue(iniPath, key, value);
}

QString OVApplicationPrivate::IniPath(const QString& folder, const QString& fileName)
{
    return QDir::toNativeSeparators(folder) + QDir::separator() + fileName;
}

void OVApplicationPrivate::MoveIni(QString* iniPath, const QString& folder, const QString& fileName)
{
#ifdef Q_OS_WIN
    const Qt::CaseSensitivity cs = Qt::CaseInsensitive;
#else
    const Qt::CaseSensitivity cs = Qt::CaseSensitive;
#endif
    const QString current = QFileInfo(*iniPath).absolutePath();
    if (QDir::cleanPath(QDir(folder).absolutePath()).compare(QDir::cleanPath(current), cs) == 0)
        return;
    *iniPath = IniPath(folder, fileName);
    QDir().mkpath(folder);
}
