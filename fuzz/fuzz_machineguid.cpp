// The machine GUID text to words step over arbitrary text, one character per byte as the
// machine-id file gives it, and the identifier built from those words.

#include "platform/OVPlatform.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text;
    for (std::size_t i = 0; i < size; ++i)
        text += char16_t(data[i]);
    OVPlatform::MachineWords(text);
    OVPlatform::DeviceIdText(OVPlatform::DeviceIdWords({}, 0, {}, &text));
    return 0;
}
