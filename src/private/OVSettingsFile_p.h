#pragma once

#include "private/OVAutotestExport_p.h"

#include <QSettings>
#include <QString>
#include <QVariant>

#include <optional>

// One access to an INI settings file through a QSettings of its own, the only way the library
// opens its settings files. QSettings is opened only on text that it can read safely (see
// OVSettingsScan): the first access to each version of a file (its size and modification time,
// as QSettings itself tells versions apart) scans the file, and the damaged parts go with a
// build-log line each. A file the library writes is repaired in place; an installation file,
// which the library never writes, is read through a repaired copy. Further accesses to the same
// version cost a stat.
class OVCORE_AUTOTEST_EXPORT OVSettingsFile
{
public:
    enum Use
    {
        Read,
        Write,
        ReadInstalled
    };

    OVSettingsFile(const QString& path, Use use);

    // False when the file cannot be made safe for this use: a value then reads as absent, and a
    // write vanishes as into an unwritable file.
    explicit operator bool() const { return m_settings.has_value(); }
    QSettings& operator*() { return *m_settings; }
    QSettings* operator->() { return &*m_settings; }

    // The value of key, or def when it is absent or cannot be read.
    static QVariant Value(const QString& path, const QString& key, const QVariant& def, Use use = Read);
    static void SetValue(const QString& path, const QString& key, const QVariant& value);

private:
    std::optional<QSettings> m_settings;
};
