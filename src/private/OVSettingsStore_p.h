#pragma once

#include "OVApplication.h"

#include <QString>
#include <QVariant>

// The application's two settings files, "app.ini" in the data folder and "user.ini" in the user
// data folder, and the rules of reading and writing them. Each value is read or written through
// a QSettings opened for that access (OVSettingsFile); nothing is cached. The application's
// private object holds the one live store; the static operations find it and, without one,
// return the caller's default, an empty folder, or do nothing.
class OVSettingsStore
{
public:
    // The user keys the library uses besides those of OVApplication::UseDataRole.
    static const QString kLayerInfoKey;
    static const QString kStatisticsEnabledKey;
    static const QString kRecentLimitKey;
    static const QString kRecentFilesKey;
    static const QString kFavoriteLimitKey;
    static const QString kFavoriteFilesKey;

    // The key of role, or an empty one for a value outside the enumeration.
    static QString Key(OVApplication::UseDataRole role);

    // Points the store at "app.ini" in dataFolder and "user.ini" in userDataFolder.
    void Locate(const QString& dataFolder, const QString& userDataFolder);

    static QVariant AppValue(const QString& key, const QVariant& def);
    static void SetAppValue(const QString& key, const QVariant& value);
    static QVariant UserValue(const QString& key, const QVariant& def);
    static QVariant UserValue(OVApplication::UseDataRole role, const QVariant& def);
    static void SetUserValue(const QString& key, const QVariant& value);
    static void SetUserValue(OVApplication::UseDataRole role, const QVariant& value);

    // The absolute folders of the two files.
    static QString DataFolder();
    static QString UserDataFolder();
    // Point the file at the same name in folder, creating folder, unless it is already there.
    static void SetDataFolder(const QString& folder);
    static void SetUserDataFolder(const QString& folder);

private:
    static OVSettingsStore* Live();

    QString appIniPath;
    QString userIniPath;
};
