#include "private/OVSettingsStore_p.h"

#include "private/OVApplication_p.h"
#include "private/OVSettingsFile_p.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using A = OVApplication;

const QString OVSettingsStore::kLayerInfoKey = QStringLiteral("DocumentIO/IncompleteInfoState");
const QString OVSettingsStore::kStatisticsEnabledKey = QStringLiteral("Statistics/Enabled");
const QString OVSettingsStore::kRecentLimitKey = QStringLiteral("RecentLimit");
const QString OVSettingsStore::kRecentFilesKey = QStringLiteral("RecentFiles");
const QString OVSettingsStore::kFavoriteLimitKey = QStringLiteral("FavoriteLimit");
const QString OVSettingsStore::kFavoriteFilesKey = QStringLiteral("FavoriteFiles");

namespace {

const QString kAppIni = QStringLiteral("app.ini");
const QString kUserIni = QStringLiteral("user.ini");
const QString kFirstVersion = QStringLiteral("2.4.0");

// The key of each OVApplication::UseDataRole.
const struct
{
    A::UseDataRole role;
    const char* key;
} kRoleKeys[] = {
    {A::Version, "Version"},
    {A::LanguageIndex, "Language/Index"},
    {A::ThemePath, "Theme/Path"},
    {A::CMWorkingProfileID, "ColorManagement/WorkingProfileID"},
    {A::CMMissingPolicy, "ColorManagement/MissingPolicy"},
    {A::CMEqualPolicy, "ColorManagement/EqualPolicy"},
    {A::CMNotEqualPolicy, "ColorManagement/NotEqualPolicy"},
    {A::CMColorSpaceMismatchPolicy, "ColorManagement/ColorSpaceMismatchPolicy"},
    {A::ShowPNGCompressionSettings, "MessagesAndConfirmationsSettings/ShowPNGCompressionSettings"},
    {A::ShowJPGCompressionSettings, "MessagesAndConfirmationsSettings/ShowJPGCompressionSettings"},
    {A::ShowTIFFCompressionSettings, "MessagesAndConfirmationsSettings/ShowTIFFCompressionSettings"},
    {A::SavePathOpen, "Save/PathOpen"},
    {A::SavePathExport, "Save/PathExport"},
    {A::SaveAsSuffix, "SaveAs/Suffix"},
    {A::BatchPathOpen, "Batch/Path/Open"},
    {A::BatchPathInput, "Batch/Path/Input"},
    {A::BatchPathOutput, "Batch/Path/Output"},
    {A::ColorsBackground, "Colors/Background"},
    {A::ColorsForeground, "Colors/Foreground"},
    {A::ColorsMaskBackground, "Colors/Mask/Background"},
    {A::ColorsMaskForeground, "Colors/Mask/Foreground"},
    {A::StartupWindowShow, "StartupWindow/Show"},
    {A::MiscellaneousCheckForUpdate, "Miscellaneous/CheckForUpdate"},
    {A::UpdateRemind, "Update/Remind"},
    {A::UpdateRemindDate, "Update/RemindDate"},
    {A::TexturePatternIndex, "TexturePatternIndex"},
    {A::ApplicationTemporaryPath, "ApplicationTemporaryPath"},
};

QVariant Read(const QString& iniPath, const QString& key, const QVariant& def)
{
    return key.isEmpty() ? def : OVSettingsFile::Value(iniPath, key, def);
}

void Write(const QString& iniPath, const QString& key, const QVariant& value)
{
    // QSettings ignores an empty key (with a warning); there is nothing to write under it.
    if (!key.isEmpty())
        OVSettingsFile::SetValue(iniPath, key, value);
}

// The native path of fileName in folder.
QString IniPath(const QString& folder, const QString& fileName)
{
    return QDir::toNativeSeparators(folder) + QDir::separator() + fileName;
}

QString Folder(const QString& iniPath)
{
    return QFileInfo(iniPath).absolutePath();
}

// Points *iniPath at fileName in folder, creating folder, unless it is already there.
void Move(QString* iniPath, const QString& folder, const QString& fileName)
{
#ifdef Q_OS_WIN
    const Qt::CaseSensitivity cs = Qt::CaseInsensitive;
#else
    const Qt::CaseSensitivity cs = Qt::CaseSensitive;
#endif
    if (QDir::cleanPath(QDir(folder).absolutePath()).compare(QDir::cleanPath(Folder(*iniPath)), cs) == 0)
        return;
    *iniPath = IniPath(folder, fileName);
    QDir().mkpath(folder);
}

} // namespace

QString OVSettingsStore::Key(OVApplication::UseDataRole role)
{
    for (const auto& entry : kRoleKeys)
        if (entry.role == role)
            return QString::fromLatin1(entry.key);
    return QString();
}

void OVSettingsStore::Locate(const QString& dataFolder, const QString& userDataFolder)
{
    appIniPath = IniPath(dataFolder, kAppIni);
    userIniPath = IniPath(userDataFolder, kUserIni);
}

OVSettingsStore* OVSettingsStore::Live()
{
    OVApplicationPrivate* d = OVApplicationPrivate::Instance();
    return d ? &d->settings : nullptr;
}

QVariant OVSettingsStore::AppValue(const QString& key, const QVariant& def)
{
    const OVSettingsStore* store = Live();
    return store ? Read(store->appIniPath, key, def) : def;
}

void OVSettingsStore::SetAppValue(const QString& key, const QVariant& value)
{
    const OVSettingsStore* store = Live();
    if (!store)
        return;
    // Without "app.ini" and its folder, it is the user data folder that gets created, not the
    // data folder; the host creates a data folder of its own choosing itself.
    if (!QFileInfo::exists(store->appIniPath) && !QFileInfo::exists(Folder(store->appIniPath)))
        QDir().mkpath(Folder(store->userIniPath));
    Write(store->appIniPath, key, value);
}

QVariant OVSettingsStore::UserValue(const QString& key, const QVariant& def)
{
    const OVSettingsStore* store = Live();
    if (!store)
        return def;
    static const QString languageKey = Key(A::LanguageIndex);
    if (key != languageKey)
        return Read(store->userIniPath, key, def);
    // A stored language may carry a region ("pt_BR"); the editor knows languages only. With
    // nothing stored the caller's default comes back as it is. Settings never read back as a
    // pointer, so one stands for the absent value.
    const QVariant absent = QVariant::fromValue<void*>(nullptr);
    const QVariant value = Read(store->userIniPath, key, absent);
    if (value.userType() == QMetaType::VoidStar)
        return def;
    static const QRegularExpression region(QStringLiteral("(_.*)$"));
    return value.toString().remove(region);
}

QVariant OVSettingsStore::UserValue(OVApplication::UseDataRole role, const QVariant& def)
{
    return UserValue(Key(role), def);
}

void OVSettingsStore::SetUserValue(const QString& key, const QVariant& value)
{
    const OVSettingsStore* store = Live();
    if (!store)
        return;
    // The version that first created "user.ini" is recorded once and never updated.
    if (!QFileInfo::exists(store->userIniPath)) {
        QDir().mkpath(Folder(store->userIniPath));
        Write(store->userIniPath, Key(A::Version), kFirstVersion);
    }
    Write(store->userIniPath, key, value);
}

void OVSettingsStore::SetUserValue(OVApplication::UseDataRole role, const QVariant& value)
{
    SetUserValue(Key(role), value);
}

QString OVSettingsStore::DataFolder()
{
    const OVSettingsStore* store = Live();
    return store ? Folder(store->appIniPath) : QString();
}

QString OVSettingsStore::UserDataFolder()
{
    const OVSettingsStore* store = Live();
    return store ? Folder(store->userIniPath) : QString();
}

// An empty folder is ignored on purpose: it would point the settings file at the root of
// the drive, "/app.ini".
void OVSettingsStore::SetDataFolder(const QString& folder)
{
    OVSettingsStore* store = Live();
    if (store && !folder.isEmpty())
        Move(&store->appIniPath, folder, kAppIni);
}

// An empty folder is ignored on purpose, as for SetDataFolder().
void OVSettingsStore::SetUserDataFolder(const QString& folder)
{
    OVSettingsStore* store = Live();
    if (store && !folder.isEmpty())
        Move(&store->userIniPath, folder, kUserIni);
}
