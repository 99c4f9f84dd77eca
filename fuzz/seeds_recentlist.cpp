// Writes the seeds of fuzz_recentlist into the folder given as the first argument: stored lists
// as the library writes them, and the damaged forms a settings file can hold.

#include "private/OVRecentList_p.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

namespace {

bool Write(const QString& folder, const QString& name, const QByteArray& bytes)
{
    QFile file(QDir(folder).filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The stored form of the strings, with its count replaced by one that lies.
QByteArray Counted(qint32 count, const QStringList& strings)
{
    QByteArray bytes = OVRecentList::Encode(strings);
    qToBigEndian(count, bytes.data());
    return bytes;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QStringList paths{QStringLiteral("/home/user/Pictures/holiday.jpg"),
                            QStringLiteral("C:\\Users\\user\\Pictures\\scan 01.tif"),
                            QStringLiteral("photo.png")};
    const QByteArray three = OVRecentList::Encode(paths);
    bool ok = Write(folder, QStringLiteral("empty"), OVRecentList::Encode({}));
    ok = Write(folder, QStringLiteral("one"), OVRecentList::Encode({paths.first()})) && ok;
    ok = Write(folder, QStringLiteral("three"), three) && ok;
    ok = Write(folder, QStringLiteral("truncated"), three.left(three.size() - 5)) && ok;
    ok = Write(folder, QStringLiteral("count-too-large"), Counted(2000000000, paths)) && ok;
    ok = Write(folder, QStringLiteral("count-negative"), Counted(-1, paths)) && ok;
    ok = Write(folder, QStringLiteral("null-string"), Counted(2, {QString(), paths.last()})) && ok;
    return ok ? 0 : 1;
}
