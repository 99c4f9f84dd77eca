// The machine GUID text to words step over arbitrary UTF-16 text, and the identifier built
// from those words.

#include "platform/OVPlatform.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        text += char16_t(data[i] | data[i + 1] << 8);
    OVPlatform::MachineWords(text);
    OVPlatform::DeviceIdText(OVPlatform::DeviceIdWords({}, 0, {}, &text));
    return 0;
}
