#include "private/OVRecentList_p.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace OVRecentList {

namespace {

// The length QDataStream writes for a null string.
constexpr quint32 kNullString = 0xffffffffu;

// One string as QDataStream writes it: its length in bytes, then UTF-16 big-endian code units.
bool ReadString(QDataStream& in, QString* text)
{
    quint32 bytes = 0;
    in >> bytes;
    if (in.status() != QDataStream::Ok)
        return false;
    if (bytes == kNullString) {
        *text = QString();
        return true;
    }
    if (bytes % 2 != 0 || bytes > quint64(in.device()->bytesAvailable()))
        return false;
    QByteArray units(int(bytes), Qt::Uninitialized);
    if (in.readRawData(units.data(), int(bytes)) != int(bytes))
        return false;
    const int length = int(bytes / 2);
    text->resize(length);
    qFromBigEndian<quint16>(units.constData(), length, text->data());
    return true;
}

} // namespace

QByteArray Encode(const QStringList& paths)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << qint32(paths.size());
    for (const QString& path : paths)
        out << path;
    return bytes;
}

QStringList Decode(const QByteArray& bytes, int limit)
{
    QDataStream in(bytes);
    qint32 count = 0;
    in >> count;
    if (in.status() != QDataStream::Ok)
        return QStringList();
    QStringList paths;
    const int wanted = std::max(0, std::min(limit, int(count)));
    for (int i = 0; i < wanted; ++i) {
        QString path;
        if (!ReadString(in, &path))
            break;
        paths << path;
    }
    return paths;
}

} // namespace OVRecentList
