#include "private/OVSettingsFile_p.h"

#include "platform/OVPlatform.h"
#include "private/OVBuildLog_p.h"
#include "private/OVSettingsScan_p.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QSaveFile>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace {

// A version of a file: its size and modification time. QSettings reads a file again when either
// changes (to the millisecond); this time is finer still.
struct Version
{
    qint64 size = -1;
    qint64 modified = 0;

    bool operator==(const Version& other) const { return size == other.size && modified == other.modified; }
};

// The version of the file at path, taken with one call and without the time zone lookups of
// QFileInfo::lastModified(), which together cost more than the rest of a settings access; none
// (size -1) for a missing file or a folder.
Version VersionOf(const QString& path)
{
    std::int64_t size = 0;
    std::int64_t modified = 0;
#ifdef Q_OS_WIN
    const std::string name = path.toStdString(); // UTF-8, as the platform layer takes it there
#else
    const std::string name = QFile::encodeName(path).toStdString();
#endif
    if (!OVPlatform::QueryFileVersion(name, &size, &modified))
        return {};
    return {size, modified};
}

// A scanned version of a file, and the file QSettings reads for it: the file itself once it is
// safe, a repaired copy, or none.
struct Scanned
{
    Version version;
    QString readPath;
};

// What every access shares: the scanned versions by path and the folder of the repaired copies.
// The lock is held for the scan only, and nothing else is locked meanwhile.
class ScanCache
{
public:
    static ScanCache& Get()
    {
        static ScanCache cache;
        return cache;
    }

    // The file QSettings may read for path (empty for none), and the build-log lines to write
    // once the lock is released.
    QString ReadPath(const QString& path, OVSettingsFile::Use use, QStringList* log)
    {
        // A missing file, or a folder, reads as empty: there is nothing to scan.
        const Version version = VersionOf(path);
        if (version.size < 0)
            return path;
        QMutexLocker locker(&m_mutex);
        const Scanned known = m_files.value(path);
        if (known.version == version)
            return known.readPath;

        Scanned scanned{version, path};
        QFile file(path);
        // An unreadable file reads as empty to QSettings too.
        const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        const QVector<OVSettingsScan::Damage> damages = OVSettingsScan::Find(text);
        if (!damages.isEmpty()) {
            const QByteArray repaired = OVSettingsScan::Repaired(text, damages);
            if (use != OVSettingsFile::ReadInstalled && Save(path, repaired))
                scanned.version = VersionOf(path);
            else
                scanned.readPath = Copy(repaired);
            for (const OVSettingsScan::Damage& damage : damages) {
                *log << (damage.section
                             ? QStringLiteral("Unclosed settings section \"%1\" closed in \"%2\".")
                             : QStringLiteral("Damaged settings value \"%1\" dropped from \"%2\"."))
                            .arg(QString::fromLatin1(damage.name), path);
            }
        }
        if (known.readPath != path && !known.readPath.isEmpty())
            QFile::remove(known.readPath);
        m_files.insert(path, scanned);
        return scanned.readPath;
    }

private:
    static bool Save(const QString& path, const QByteArray& text)
    {
        QSaveFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    }

    // A new file for each copy: QSettings keeps what it read of a file as long as the file's
    // size and modification time stay the same.
    QString Copy(const QByteArray& text)
    {
        if (!m_copies)
            m_copies = std::make_unique<QTemporaryDir>();
        QFile file(m_copies->filePath(QString::number(++m_copyCount) + QStringLiteral(".ini")));
        if (!m_copies->isValid() || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            return QString();
        return file.fileName();
    }

    QMutex m_mutex;
    QHash<QString, Scanned> m_files;
    std::unique_ptr<QTemporaryDir> m_copies;
    int m_copyCount = 0;
};

} // namespace

OVSettingsFile::OVSettingsFile(const QString& path, Use use)
{
    QStringList log;
    const QString readPath = ScanCache::Get().ReadPath(path, use, &log);
    for (const QString& line : log)
        OV_BUILD_LOG(line);
    // Writes go into the file itself or nowhere.
    if (!readPath.isEmpty() && (use != Write || readPath == path))
        m_settings.emplace(readPath, QSettings::IniFormat);
}

QVariant OVSettingsFile::Value(const QString& path, const QString& key, const QVariant& def, Use use)
{
    OVSettingsFile file(path, use);
    return file ? file->value(key, def) : def;
}

void OVSettingsFile::SetValue(const QString& path, const QString& key, const QVariant& value)
{
    OVSettingsFile file(path, Write);
    if (file)
        file->setValue(key, value);
}
