// OVCMSProfile loading from arbitrary bytes, from memory and from a file.
//
// The first byte chooses what the rest means: '0' to '4' start from a complete profile made
// by Little CMS (sRGB, other primaries, grey, Lab, CMYK link) and apply the rest as edits of
// three bytes each (offset high, offset low, new value); any other first byte makes the
// whole input the profile. Loading from memory and from a file of the same bytes must agree,
// and a loaded profile must answer every question about itself.

#include "../tests/support/OVProfileFixtures.h"
#include "OVCMSProfile.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

QByteArray Input(const uint8_t* data, size_t size)
{
    const QByteArray raw(reinterpret_cast<const char*>(data), int(size));
    if (size == 0 || data[0] < '0' || data[0] > '4')
        return raw;
    static const char* const kinds[] = {"sRGB", "wide", "gray", "lab", "cmyk"};
    static QByteArray bases[5];
    QByteArray& base = bases[data[0] - '0'];
    if (base.isEmpty())
        base = OVTest::MakeProfile(QString::fromLatin1(kinds[data[0] - '0']));
    QByteArray bytes = base;
    for (size_t at = 1; at + 3 <= size; at += 3)
        bytes[((data[at] << 8) | data[at + 1]) % bytes.size()] = char(data[at + 2]);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static QTemporaryDir dir;
    const QByteArray bytes = Input(data, size);
    const QString path = dir.filePath(QStringLiteral("input.icc"));
    // A new file each time: truncating one in place makes some file systems flush it.
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
    file.close();

    OVCMSProfile memory;
    const bool loaded = memory.LoadFromData(bytes);
    OVCMSProfile fromFile;
    OVCMSProfile rgbOnly;
    if (fromFile.Load(path) != loaded || rgbOnly.Load(path, OVCMSProfile::RGBSpace) !=
                                             (loaded && memory.GetColorSpace() == OVCMSProfile::RGBSpace))
        std::abort();
    if (!loaded) {
        if (memory.IsValid() || memory.GetColorSpace() != 0 || !memory.GetDescription().isEmpty())
            std::abort();
        return 0;
    }
    const OVCMSProfile copy = fromFile;
    if (copy.GetData() != memory.GetData() || !bytes.startsWith(memory.GetData()) ||
        copy.GetColorSpace() != memory.GetColorSpace() || copy.GetDescription() != memory.GetDescription())
        std::abort();
    return 0;
}
