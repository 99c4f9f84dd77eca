#include "OVApplication.h"

#include "platform/OVPlatform.h"
#include "private/OVApplication_p.h"
#include "private/OVBuildLog_p.h"
#include "private/OVLanguages_p.h"
#include "private/OVLook_p.h"
#include "private/OVPluginLoader_p.h"
#include "private/OVSettingsStore_p.h"
#include "private/OVStatisticsClient_p.h"

#include <QDir>
#include <QEvent>

#include <atomic>

namespace {

// The application flags of the Qt version the editor was first released with (5.10.1).
constexpr int kApplicationFlags = 0x050A01;

} // namespace

OVApplication::OVApplication(int& argc, char** argv)
    : QApplication(argc, argv, kApplicationFlags)
    , d(new OVApplicationPrivate(this))
{
    d->Start();
}

OVApplication::~OVApplication()
{
    delete d;
}

OVApplication* OVApplication::GetInstance()
{
    return qobject_cast<OVApplication*>(QCoreApplication::instance());
}

bool OVApplication::event(QEvent* e)
{
    if (e->type() == QEvent::ApplicationActivate)
        emit AboutActivated();
    else if (e->type() == QEvent::ApplicationDeactivate)
        emit AboutDeactivated();
    return QApplication::event(e);
}

QString OVApplication::GetResourcePath()
{
    if (!QCoreApplication::instance())
        return QString();
    QDir dir(QCoreApplication::applicationDirPath());
    if (!dir.cd(QStringLiteral("../Resources")))
        OV_BUILD_LOG(QStringLiteral("The Resouces folder does not exist"));
    return dir.absolutePath();
}

int OVApplication::GetProgressTimeout()
{
    return 2000;
}

IBrushFactory* OVApplication::GetBrushFactory()
{
    return OVApplicationPrivate::BrushFactory();
}

void OVApplication::FlushData()
{
    if (OVApplication* app = GetInstance())
        emit app->FlushPluginData();
}

void OVApplication::UIReady()
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        OVPluginLoader(*d).UIReady();
}

// Statistics

void OVApplication::SendStatisticsEvent(const QJsonDocument& doc)
{
    if (StatisticsClient* client = OVApplicationPrivate::EventsClient())
        client->EnqueueEvent(doc);
}

void OVApplication::SendStatisticsEvent(const QString& type, int id)
{
    if (StatisticsClient* client = OVApplicationPrivate::EventsClient())
        client->EnqueueEvent(type, id);
}

void OVApplication::SendStatisticsEvent(const QString& type, int id, std::map<QString, QString> properties)
{
    if (StatisticsClient* client = OVApplicationPrivate::EventsClient())
        client->EnqueueEvent(type, id, std::move(properties));
}

void OVApplication::SendIdentificationEvent(const QString& plan, const QString& channel, const QString& email,
                                            const QString& startVersion)
{
    if (StatisticsClient* client = OVApplicationPrivate::IdentificationClient())
        client->EnqueueIdentification(plan, channel, email, startVersion);
}

void OVApplication::ChangeStatisticsSession()
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        d->statisticsClient->ChangeSession();
}

void OVApplication::SetStatisticsEnabled(bool enabled)
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    if (!d)
        return;
    d->statisticsEnabled = enabled;
    OVSettingsStore::SetUserValue(OVSettingsStore::kStatisticsEnabledKey, enabled);
}

bool OVApplication::IsStatisticsEnabled()
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d && d->statisticsEnabled;
}

// Plug-ins

void OVApplication::LoadPlugins()
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        OVPluginLoader(*d).LoadFolders(true, nullptr);
}

void OVApplication::LoadPlugins(QFlags<PluginsLoadType> flags)
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        OVPluginLoader(*d).LoadFolders(flags.testFlag(Brushes), &flags);
}

void OVApplication::LoadPlugins(const QStringList& files)
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        OVPluginLoader(*d).Load(files);
}

void OVApplication::LoadPlugin(const QString& file)
{
    LoadPlugins(QStringList{file});
}

void OVApplication::UnloadPlugins()
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        OVPluginLoader(*d).UnloadAll();
}

void OVApplication::UnloadPlugins(const QStringList& files)
{
    if (OVApplicationPrivate* d = OVApplicationPrivate::Instance())
        OVPluginLoader(*d).Unload(files);
}

void OVApplication::UnloadPlugin(const QString& file)
{
    UnloadPlugins(QStringList{file});
}

QStringList OVApplication::PluginFileName(PluginsLoadType type)
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? OVPluginLoader(*d).WellKnownFiles(type) : QStringList();
}

std::vector<QString> OVApplication::GetErrorPlugins()
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? OVPluginLoader(*d).ErrorFiles() : std::vector<QString>();
}

QString OVApplication::GetErrorInfo(const QString& fileName)
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? OVPluginLoader(*d).ErrorInfo(fileName) : QString();
}

void OVApplication::RegisterRefineSelectionAction(QAction* action)
{
    if (action == d->refineSelection)
        return;
    d->refineSelection = action;
    emit RefineSelectionRegistered(action);
}

QAction* OVApplication::GetRefineSelection() const
{
    return d->refineSelection;
}

void OVApplication::SetColorWidget(OVColorWidget* widget)
{
    d->colorWidget = widget;
}

const OVColorWidget* OVApplication::GetColorWidget() const
{
    return d->colorWidget;
}

void OVApplication::SetRecentColor(const QColor& color)
{
    if (color == d->recentColor)
        return;
    d->recentColor = color;
    emit RecentColorChanged(color);
}

void OVApplication::SetRecentPicker(const QColor& color)
{
    if (color == d->recentPicker)
        return;
    d->recentPicker = color;
    emit RecentPickerChanged(color);
}

// Languages

QStringList OVApplication::GetLanguages()
{
    return d->languages;
}

QString OVApplication::GetLanguage() const
{
    return d->language;
}

bool OVApplication::LoadLanguage(const QString& code)
{
    return OVLanguages(*d).Load(code);
}

QString OVApplication::GetLanguageName(const QString& code)
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? OVLanguages(*d).Name(code) : QString();
}

QString OVApplication::GetDefaultLanguage()
{
    return GetInstance() ? OVLanguages::DefaultLanguage() : QStringLiteral("en");
}

// Theme, colours and patterns

QString OVApplication::GetName(ThemeType type)
{
    return OVLook::ThemeFolder(type);
}

OVApplication::ThemeType OVApplication::GetApplicationTheme()
{
    // Any stored folder other than the dark one counts as light.
    return GetUserValue(ThemePath, GetName(Dark)).toString() == GetName(Dark) ? Dark : Light;
}

void OVApplication::SetApplicationTheme(ThemeType type)
{
    SetUserValue(ThemePath, GetName(type));
}

bool OVApplication::LoadTheme()
{
    return OVLook(*d).LoadTheme();
}

OVApplication::ThemeType OVApplication::GetTheme() const
{
    return ThemeType(d->theme);
}

QColor OVApplication::GetBackground()
{
    return OVLook::GetColour(OVLook::kBackground);
}

void OVApplication::SetBackground(const QColor& color)
{
    OVLook::SetColour(OVLook::kBackground, color);
}

QColor OVApplication::GetForeground()
{
    return OVLook::GetColour(OVLook::kForeground);
}

void OVApplication::SetForeground(const QColor& color)
{
    OVLook::SetColour(OVLook::kForeground, color);
}

QColor OVApplication::GetMaskBackground()
{
    return OVLook::GetColour(OVLook::kMaskBackground);
}

void OVApplication::SetMaskBackground(const QColor& color)
{
    OVLook::SetColour(OVLook::kMaskBackground, color);
}

QColor OVApplication::GetMaskForeground()
{
    return OVLook::GetColour(OVLook::kMaskForeground);
}

void OVApplication::SetMaskForeground(const QColor& color)
{
    OVLook::SetColour(OVLook::kMaskForeground, color);
}

QBrush OVApplication::GetGradient()
{
    return OVLook::Gradient();
}

void OVApplication::SetGradient(const QBrush& brush)
{
    OVLook::Gradient() = brush;
}

int OVApplication::LoadPatterns(const QString& folder)
{
    return OVLook(*d).LoadPatterns(folder);
}

int OVApplication::GetPatternCount()
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? d->patterns.size() : 0;
}

QString OVApplication::GetPatternFile(int i)
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? d->patterns.value(i) : QString();
}

int OVApplication::GetTexturePatternIndex()
{
    return OVLook::PatternIndex();
}

void OVApplication::SetTexturePatternIndex(int index)
{
    OVLook::SetPatternIndex(index);
}

// Settings

QVariant OVApplication::GetApplicationValue(const QString& key, const QVariant& def)
{
    return OVSettingsStore::AppValue(key, def);
}

void OVApplication::SetAppicationValue(const QString& key, const QVariant& value)
{
    OVSettingsStore::SetAppValue(key, value);
}

QVariant OVApplication::GetUserValue(const QString& key, const QVariant& def)
{
    return OVSettingsStore::UserValue(key, def);
}

void OVApplication::SetUserValue(const QString& key, const QVariant& value)
{
    OVSettingsStore::SetUserValue(key, value);
}

QVariant OVApplication::GetUserValue(UseDataRole role, const QVariant& def)
{
    return OVSettingsStore::UserValue(role, def);
}

void OVApplication::SetUserValue(UseDataRole role, const QVariant& value)
{
    OVSettingsStore::SetUserValue(role, value);
}

QString OVApplication::GetName(UseDataRole role)
{
    return OVSettingsStore::Key(role);
}

QString OVApplication::GetDataFolder()
{
    return OVSettingsStore::DataFolder();
}

void OVApplication::SetDataFolder(const QString& folder)
{
    OVSettingsStore::SetDataFolder(folder);
}

QString OVApplication::GetUserDataFolder()
{
    return OVSettingsStore::UserDataFolder();
}

void OVApplication::SetUserDataFolder(const QString& folder)
{
    OVSettingsStore::SetUserDataFolder(folder);
}

QString OVApplication::GetPathOpen()
{
    return GetUserValue(SavePathOpen, QString()).toString();
}

void OVApplication::SetPathOpen(const QString& path)
{
    SetUserValue(SavePathOpen, path);
}

QString OVApplication::GetPathExport()
{
    return GetUserValue(SavePathExport, QString()).toString();
}

void OVApplication::SetPathExport(const QString& path)
{
    SetUserValue(SavePathExport, path);
}

QString OVApplication::GetBatchPathOpen()
{
    return GetUserValue(BatchPathOpen, QString()).toString();
}

void OVApplication::SetBatchPathOpen(const QString& path)
{
    SetUserValue(BatchPathOpen, path);
}

QString OVApplication::GetBatchPathInput()
{
    return GetUserValue(BatchPathInput, QString()).toString();
}

void OVApplication::SetBatchPathInput(const QString& path)
{
    SetUserValue(BatchPathInput, path);
}

QString OVApplication::GetBatchPathOutput()
{
    return GetUserValue(BatchPathOutput, QString()).toString();
}

void OVApplication::SetBatchPathOutput(const QString& path)
{
    SetUserValue(BatchPathOutput, path);
}

bool OVApplication::IsPNGCompressionVisible()
{
    return GetUserValue(ShowPNGCompressionSettings, true).toBool();
}

void OVApplication::SetPNGCompressionVisible(bool visible)
{
    SetUserValue(ShowPNGCompressionSettings, visible);
}

bool OVApplication::IsJPGCompressionVisible()
{
    return GetUserValue(ShowJPGCompressionSettings, true).toBool();
}

void OVApplication::SetJPGCompressionVisible(bool visible)
{
    SetUserValue(ShowJPGCompressionSettings, visible);
}

bool OVApplication::IsTIFCompressionVisible()
{
    return GetUserValue(ShowTIFFCompressionSettings, true).toBool();
}

void OVApplication::SetTIFCompressionVisible(bool visible)
{
    SetUserValue(ShowTIFFCompressionSettings, visible);
}

bool OVApplication::WarnAboutLayerInfo()
{
    return GetUserValue(OVSettingsStore::kLayerInfoKey, true).toBool();
}

void OVApplication::SetWarnAboutLayerInfo(bool warn)
{
    SetUserValue(OVSettingsStore::kLayerInfoKey, warn);
}

OVApplication::ColorManagementMissingPolicy OVApplication::GetColorManagementMissingPolicy()
{
    return ColorManagementMissingPolicy(GetUserValue(CMMissingPolicy, int(MissingAssignWorking)).toInt());
}

void OVApplication::SetColorManagementMissingPolicy(ColorManagementMissingPolicy policy)
{
    SetUserValue(CMMissingPolicy, int(policy));
}

OVApplication::ColorManagementEqualPolicy OVApplication::GetColorManagementEqualPolicy()
{
    return ColorManagementEqualPolicy(GetUserValue(CMEqualPolicy, int(EqualPreserve)).toInt());
}

void OVApplication::SetColorManagementEqualPolicy(ColorManagementEqualPolicy policy)
{
    SetUserValue(CMEqualPolicy, int(policy));
}

OVApplication::ColorManagementNotEqualPolicy OVApplication::GetColorManagementNotEqualPolicy()
{
    return ColorManagementNotEqualPolicy(
        GetUserValue(CMNotEqualPolicy, int(NotEqualConvertToWorking)).toInt());
}

void OVApplication::SetColorManagementNotEqualPolicy(ColorManagementNotEqualPolicy policy)
{
    SetUserValue(CMNotEqualPolicy, int(policy));
}

OVApplication::ColorManagementColorSpaceMismatchPolicy
OVApplication::GetColorManagementColorSpaceMismatchPolicy()
{
    return ColorManagementColorSpaceMismatchPolicy(
        GetUserValue(CMColorSpaceMismatchPolicy, int(MismatchIgnore)).toInt());
}

void OVApplication::SetColorManagementColorSpaceMismatchPolicy(ColorManagementColorSpaceMismatchPolicy policy)
{
    SetUserValue(CMColorSpaceMismatchPolicy, int(policy));
}

// Platform information

namespace {

// Filled on first use without a lock: two first calls racing only compute the same value.
std::atomic<int> s_osVersion{0};
std::atomic<int> s_osType{0};

} // namespace

OVApplication::OSVersion OVApplication::GetOSVersion()
{
    if (const int cached = s_osVersion.load(std::memory_order_relaxed))
        return OSVersion(cached);
    OVPlatform::VersionNumbers version;
    if (!OVPlatform::QueryWindowsVersion(&version))
        return Unknown;
    OV_BUILD_LOG(
        QStringLiteral("Version %1.%2 build %3").arg(version.major).arg(version.minor).arg(version.build));
    s_osVersion.store(OVPlatform::MapWindowsVersion(version), std::memory_order_relaxed);
    return OSVersion(s_osVersion.load(std::memory_order_relaxed));
}

OVApplication::OSType OVApplication::GetOSType()
{
    if (!s_osType.load(std::memory_order_relaxed))
        s_osType.store(OVPlatform::IsWorkstation() ? Workstation : Server, std::memory_order_relaxed);
    return OSType(s_osType.load(std::memory_order_relaxed));
}

QString OVApplication::GetOSName(OSVersion version, OSType type)
{
    static OVPlatform::FirstNonEmpty name;
    return QString::fromStdString(name.Keep(OVPlatform::OSName(version, type)));
}

QString OVApplication::GetOSVersionString()
{
    return QString::fromStdString(OVPlatform::SystemVersionText());
}
