// The telemetry configuration lookup over arbitrary input: the text up to the first newline
// is the path, the rest the resource's hexadecimal text.

#include "private/OVCoreConfig_p.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    const int newline = input.indexOf('\n');
    const QString path = newline < 0 ? QStringLiteral("node1/A0") : QString::fromUtf8(input.left(newline));
    ReadCoreConfigValue(input.mid(newline + 1), path);
    return 0;
}
