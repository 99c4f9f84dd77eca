// Writes the seeds of fuzz_gradientstop into the folder given as the first argument: stops as the
// library writes them under several stream settings, led by the settings byte the target reads,
// and one cut short.

#include "OVGradientStop.h"

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>

namespace {

// The settings byte, then the stops written with those settings.
QByteArray Seed(quint8 settings, const QList<OVGradientStop>& stops)
{
    QByteArray bytes(1, char(settings));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly | QIODevice::Append);
    QDataStream stream(&buffer);
    stream.setByteOrder(settings & 1 ? QDataStream::LittleEndian : QDataStream::BigEndian);
    stream.setFloatingPointPrecision(settings & 2 ? QDataStream::SinglePrecision
                                                  : QDataStream::DoublePrecision);
    if (settings & 4)
        stream.setVersion(QDataStream::Qt_3_3);
    for (const OVGradientStop& stop : stops)
        stream << stop;
    return bytes;
}

bool Write(const QString& folder, const QString& name, const QByteArray& bytes)
{
    QFile file(QDir(folder).filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QList<OVGradientStop> stops = {
        OVGradientStop(0.0, QColor::fromHsv(120, 200, 90), false, false, false),
        OVGradientStop(0.25, QColor(255, 0, 0), true, false, true),
        OVGradientStop(1.0, QColor(), false, true, false),
        OVGradientStop(0.5, QColor::fromRgbF(1.5, -0.25, 0.5), false, false, true)};
    const QByteArray one = Seed(0, {stops[1]});
    bool ok = Write(folder, QStringLiteral("one"), one);
    ok = Write(folder, QStringLiteral("truncated"), one.left(one.size() - 4)) && ok;
    for (quint8 settings = 0; settings < 8; ++settings)
        ok = Write(folder, QStringLiteral("all-%1").arg(settings), Seed(settings, stops)) && ok;
    return ok ? 0 : 1;
}
