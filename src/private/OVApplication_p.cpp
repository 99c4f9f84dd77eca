#include "private/OVApplication_p.h"

#include "OVApplication.h"
#include "OVPixelRatioRound.h"
#include "private/KXExportResolutions_p.h"
#include "private/KXExportSizes_p.h"
#include "private/OVBuildLog_p.h"
#include "private/OVLanguages_p.h"

#include <QDir>
#include <QProcessEnvironment>

#include "private/OVCoreConfig_p.h"
#include "private/OVScreenTracker_p.h"
#include "private/OVStatisticsClient_p.h"

namespace {

IBrushFactory* s_brushFactory = nullptr;

const QString kProductPath = QStringLiteral("/Tamsendo/Orvelin");
const QString kLocalAppDataPath = QStringLiteral("/AppData/Local");

StatisticsClient* StatisticsTarget(StatisticsClient* OVApplicationPrivate::*client)
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d && d->statisticsEnabled ? d->*client : nullptr;
}

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

    settings.Locate(dataFolder, userDataFolder);

    // A failure here is not reported: later writes of user values then simply fail.
    QDir().mkpath(userDataFolder);

    translationsDir = QDir(OVApplication::GetResourcePath() + QStringLiteral("/translations")).absolutePath();
    languages = OVLanguages(*this).Scan();
    statisticsEnabled = OVSettingsStore::UserValue(OVSettingsStore::kStatisticsEnabledKey, true).toBool();

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

StatisticsClient* OVApplicationPrivate::EventsClient()
{
    return StatisticsTarget(&OVApplicationPrivate::statisticsClient);
}

StatisticsClient* OVApplicationPrivate::IdentificationClient()
{
    return StatisticsTarget(&OVApplicationPrivate::configuredClient);
}
