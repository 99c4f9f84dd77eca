// The export list files: a stored resolution string on its own, and a whole INI file read as
// the export resolutions and the export sizes.

#include "private/KXExportResolutions_p.h"
#include "private/KXExportSizes_p.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

// Each input is a new file to QSettings, which would otherwise keep reading its cached copy of
// an earlier input of the same size written within the same millisecond.
QString WriteFile(const QByteArray& bytes)
{
    static QTemporaryDir folder;
    static qint64 stamp = 0;
    QFile file(folder.filePath(QStringLiteral("exportlist.ini")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        abort();
    file.setFileTime(QDateTime::fromSecsSinceEpoch(++stamp), QFileDevice::FileModificationTime);
    return file.fileName();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));

    QSize item;
    if (KXExportResolutionTable::Parse(QString::fromUtf8(bytes), &item)) {
        // A resolution that parses lies within the bounds and is stored as it was understood.
        if (item.width() < 1 || item.width() > 10000 || item.height() < 1 || item.height() > 10000)
            abort();
        QSize again;
        if (!KXExportResolutionTable::Parse(KXExportResolutionTable::Store(item), &again) || again != item)
            abort();
    }

    const QString path = WriteFile(bytes);
    if (!KXExportResolutionsPrivate::Readable(path))
        return 0;
    QSettings settings(path, QSettings::IniFormat);
    KXExportResolutionsPrivate::HasVersion(settings);
    for (const QSize& resolution : KXExportResolutionsPrivate::Read(settings)) {
        if (!resolution.isValid() || resolution.isEmpty())
            abort();
    }
    for (qint64 value : KXExportSizesPrivate::Read(settings)) {
        if (value <= 0)
            abort();
    }
    return 0;
}
