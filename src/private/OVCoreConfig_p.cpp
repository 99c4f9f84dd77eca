#include "private/OVCoreConfig_p.h"

#include <QDomDocument>
#include <QFile>
#include <QStringList>

QString ReadCoreConfigValue(const QString& path)
{
    QFile resource(QStringLiteral(":core"));
    if (!resource.open(QIODevice::ReadOnly))
        return QString();
    return ReadCoreConfigValue(resource.readAll(), path);
}

QString ReadCoreConfigValue(const QByteArray& hexText, const QString& path)
{
    QDomDocument document;
    if (!document.setContent(QByteArray::fromHex(hexText)))
        return QString();

    // Each segment is looked for among the children of the element the previous one found;
    // the first sibling of that name is taken, and a dead end below it is final.
    const QStringList segments = path.split(QLatin1Char('/'));
    int next = 0;
    QString sought = segments.at(next++);
    QDomNode node = document.elementsByTagName(QStringLiteral("main")).item(0).firstChild();
    while (!node.isNull()) {
        if (node.isElement() && node.toElement().tagName() == sought) {
            if (next == segments.size())
                return node.toElement().text();
            sought = segments.at(next++);
            node = node.firstChild();
        } else {
            node = node.nextSibling();
        }
    }
    return QString();
}
