// A settings file of any bytes, through the library's own settings path: the guard scans it, as
// a file the library writes and as an installation file, then QSettings reads every key, writes
// one (which decodes the whole file again) and reads it back. A huge allocation, a hang or a
// crash is a finding, and so is a file the guard left or QSettings wrote that the guard would
// still find damage in.

#include "private/OVSettingsFile_p.h"
#include "private/OVSettingsScan_p.h"

#include <QColor>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

// Each input is a new version of the file to QSettings and the guard, which would otherwise keep
// what they read of an earlier input of the same size written within the same moment.
QString WriteFile(const QString& name, const QByteArray& bytes)
{
    static QTemporaryDir folder;
    static qint64 stamp = 0;
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        abort();
    file.setFileTime(QDateTime::fromSecsSinceEpoch(++stamp), QFileDevice::FileModificationTime);
    return file.fileName();
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ReadAll(OVSettingsFile& file)
{
    if (file) {
        for (const QString& key : file->allKeys())
            file->value(key);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool once = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("ovcore.debug=false"));
        // Writing settings syncs the file to disk; in memory that costs nothing.
        if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
            qputenv("TMPDIR", "/dev/shm");
        return true;
    }();
    static_cast<void>(once);
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));

    // An installation file is read through a repaired copy and never written.
    const QString installed = WriteFile(QStringLiteral("plugins.ini"), bytes);
    {
        OVSettingsFile file(installed, OVSettingsFile::ReadInstalled);
        ReadAll(file);
    }
    if (ReadFile(installed) != bytes)
        abort();

    const QString user = WriteFile(QStringLiteral("user.ini"), bytes);
    {
        OVSettingsFile file(user, OVSettingsFile::Read);
        ReadAll(file);
    }
    if (!OVSettingsScan::Find(ReadFile(user)).isEmpty())
        abort();
    const QColor colour(1, 2, 3, 4);
    OVSettingsFile::SetValue(user, QStringLiteral("Colors/Background"), colour);
    if (OVSettingsFile::Value(user, QStringLiteral("Colors/Background"), QVariant()).value<QColor>() !=
        colour)
        abort();
    if (!OVSettingsScan::Find(ReadFile(user)).isEmpty())
        abort();
    return 0;
}
