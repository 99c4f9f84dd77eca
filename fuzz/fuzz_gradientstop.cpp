// Reads gradient stops from arbitrary bytes. The first byte chooses the stream's settings (bit 0
// little-endian, bit 1 single precision, bit 2 the stream version before colours carried their
// colour model); the rest is read stop after stop until the stream fails or ends. Every stop
// read must write and read back to the same position and flags.

#include "OVGradientStop.h"

#include <QByteArray>
#include <QDataStream>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void Configure(QDataStream& stream, uint8_t settings)
{
    stream.setByteOrder(settings & 1 ? QDataStream::LittleEndian : QDataStream::BigEndian);
    stream.setFloatingPointPrecision(settings & 2 ? QDataStream::SinglePrecision
                                                  : QDataStream::DoublePrecision);
    if (settings & 4)
        stream.setVersion(QDataStream::Qt_3_3);
}

bool SameFields(const OVGradientStop& a, const OVGradientStop& b)
{
    const double pa = a.GetPosition();
    const double pb = b.GetPosition();
    return std::memcmp(&pa, &pb, sizeof pa) == 0 && a.IsBackground() == b.IsBackground() &&
           a.IsForeground() == b.IsForeground() && a.IsUserColor() == b.IsUserColor();
}

// A colour as the stream with these settings stores it.
QByteArray Streamed(const QColor& color, uint8_t settings)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    Configure(out, settings);
    out << color;
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const uint8_t settings = data[0];
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data + 1), int(size - 1));
    QDataStream in(bytes);
    Configure(in, settings);
    while (in.status() == QDataStream::Ok && !in.atEnd()) {
        OVGradientStop stop;
        in >> stop;
        if (in.status() != QDataStream::Ok)
            break;

        QByteArray written;
        QDataStream out(&written, QIODevice::WriteOnly);
        Configure(out, settings);
        out << stop;
        QDataStream back(written);
        Configure(back, settings);
        OVGradientStop again;
        back >> again;
        if (back.status() != QDataStream::Ok || !back.atEnd() || !SameFields(stop, again))
            std::abort();
        // Unbound, both give their stored colour, and it streams out the same.
        for (OVGradientStop* unbound : {&stop, &again}) {
            unbound->SetBackground(false);
            unbound->SetForeground(false);
            unbound->SetUserColor(false);
        }
        if (Streamed(stop.GetColor(), settings) != Streamed(again.GetColor(), settings))
            std::abort();
    }
    return 0;
}
