
#include "OVDemoCoreConfig.h"

#include <QByteArray>
#include <QResource>
#include <QtEndian>

namespace {

void Append16(QByteArray& data, quint16 value)
{
    char bytes[2];
    qToBigEndian(value, bytes);
    data.append(bytes, 2);
}

void Append32(QByteArray& data, quint32 value)
{
    char bytes[4];
    qToBigEndian(value, bytes);
    data.append(bytes, 4);
}

// The hash Qt's resource lookup compares names by.
quint32 NameHash(const QString& name)
{
    quint32 h = 0;
    for (const QChar c : name) {
        h = (h << 4) + c.unicode();
        h ^= (h & 0xf0000000) >> 23;
        h &= 0x0fffffff;
    }
    return h;
}

// A resource bundle in Qt's binary resource format (version 1) holding one file at the root.
// The port is known only at run time, so the bundle cannot be compiled in.
QByteArray Bundle(const QString& name, const QByteArray& contents)
{
    constexpr quint32 kHeader = 20;
    constexpr quint32 kNode = 14;
    const quint32 tree = kHeader;
    const quint32 names = tree + 2 * kNode;
    const quint32 data = names + 6 + 2 * quint32(name.size());

    QByteArray bundle("qres");
    Append32(bundle, 1);
    Append32(bundle, tree);
    Append32(bundle, data);
    Append32(bundle, names);
    // Node 0: the root folder with one child, node 1.
    Append32(bundle, 0);
    Append16(bundle, 2);
    Append32(bundle, 1);
    Append32(bundle, 1);
    // Node 1: the file, uncompressed, for any country and the C language (the entry every
    // locale falls back to), its data at offset 0.
    Append32(bundle, 0);
    Append16(bundle, 0);
    Append16(bundle, 0);
    Append16(bundle, 1);
    Append32(bundle, 0);
    Append16(bundle, quint16(name.size()));
    Append32(bundle, NameHash(name));
    for (const QChar c : name)
        Append16(bundle, c.unicode());
    Append32(bundle, quint32(contents.size()));
    bundle.append(contents);
    return bundle;
}

} // namespace

namespace OVDemoCoreConfig {

QString CollectorUrl()
{
    bool ok = false;
    int port = qEnvironmentVariableIntValue("OVDEMO_COLLECTOR_PORT", &ok);
    if (!ok || port <= 0 || port > 65535)
        port = kDefaultCollectorPort;
    return QStringLiteral("http://127.0.0.1:%1").arg(port);
}

void Register()
{
    const QString url = CollectorUrl();
    const QString xml = QStringLiteral("<main><node1>"
                                       "<A0>ovdemo-key</A0>"
                                       "<A2>%1/events</A2>"
                                       "<A3>%1/identification</A3>"
                                       "<A4>identification</A4>"
                                       "<A5>event</A5>"
                                       "</node1></main>")
                            .arg(url);
    // Registered once for the life of the process; the resource system keeps the pointer.
    static const QByteArray bundle = Bundle(QStringLiteral("core"), xml.toUtf8().toHex());
    QResource::registerResource(reinterpret_cast<const uchar*>(bundle.constData()));
}

} // namespace OVDemoCoreConfig
