#pragma once

// The seam between the library and the operating system: plain C++, no Qt, so that it builds
// and runs alone on every system (its test program runs natively and, cross-compiled, under
// a Windows ABI).
//
// The first part, the system facts, has one implementation per system: win32/ makes the
// Win32 calls, linux/ reads the Linux equivalents. The second part is arithmetic over those
// facts and is the same everywhere (OVPlatform.cpp).

#include "../private/OVAutotestExport_p.h"
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace OVPlatform {

// ---- System facts (win32/OVPlatform_win32.cpp, linux/OVPlatform_linux.cpp) ----

struct VersionNumbers
{
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
};

// A list entry of a display or monitor; the primary one carries the flag.
struct ScreenEntry
{
    std::string text;
    bool primary = false;
};

// A network adapter's hardware address; at most 8 bytes are kept (MakeHardwareAddress).
struct HardwareAddress
{
    std::array<std::uint8_t, 8> bytes{};
    std::size_t length = 0;
};

struct AdapterList
{
    bool ok = false;                    // false when the adapters could not be listed
    std::vector<HardwareAddress> first; // the first two adapters, in the system's order
};

// The Windows version (GetVersionExW); false on other systems and when the call fails.
bool QueryWindowsVersion(VersionNumbers* version);
// The system's version: the Windows version, or the kernel release's first three numbers.
bool QuerySystemVersion(VersionNumbers* version);
// Whether the product type is a workstation rather than a server.
bool IsWorkstation();
// Each display's current mode "WxH" (false when the system has no such list: the caller then
// asks its toolkit), in enumeration order.
bool QueryDisplayModes(std::vector<ScreenEntry>* modes);
// Each monitor's scale factor in percent, in enumeration order (false as above).
bool QueryMonitorScales(std::vector<ScreenEntry>* scales);
// CPUID leaf 0, sub-leaf 0: EAX, EBX, ECX, EDX (zeros where there is no such instruction).
std::array<std::uint32_t, 4> QueryCpuidLeaf0();
// The serial number of the system volume (0 when it cannot be read).
std::uint32_t QueryVolumeSerial();
AdapterList QueryAdapters();
// The machine GUID text as stored, false when it cannot be read.
bool QueryMachineGuid(std::u16string* text);
// The user's country name in English with its terminating null counted, false without one.
bool QueryCountryName(std::u16string* name);
// The size and the last modification time (in the system's own units) of the regular file at
// path (UTF-8 on Windows, the file system's own bytes elsewhere), with one call; false for a
// missing file, a folder or a device.
bool QueryFileVersion(const std::string& path, std::int64_t* size, std::int64_t* modified);

// ---- Arithmetic over the facts (OVPlatform.cpp) ----

// The OSVersion value for a Windows version; 0 for versions without a name.
int MapWindowsVersion(const VersionNumbers& version);
// The OSVersion's name, with "Server" appended for the server type (2); "" past the table.
std::string OSName(int version, int type);
// "major.minor.build", or "0.0.0" when the numbers could not be read.
std::string VersionText(bool ok, const VersionNumbers& version);

// Keeps the first non-empty text it is offered and answers with it from then on.
class FirstNonEmpty
{
public:
    FirstNonEmpty() = default;
    ~FirstNonEmpty();
    FirstNonEmpty(const FirstNonEmpty&) = delete;
    FirstNonEmpty& operator=(const FirstNonEmpty&) = delete;
    std::string Keep(std::string candidate);

private:
    std::atomic<const std::string*> m_kept{nullptr};
};

// The entries' texts, each primary one moved to the front as it comes, the others appended.
std::vector<std::string> PrimaryFirst(const std::vector<ScreenEntry>& entries);

HardwareAddress MakeHardwareAddress(const std::uint8_t* bytes, std::size_t length);
// Bytes at even offsets summed as low bytes, at odd offsets as high bytes, modulo 65536.
std::uint16_t AdapterHash(const HardwareAddress& address);
// The sum of the 16-bit halves of the four registers, modulo 65536.
std::uint16_t ProcessorWord(const std::array<std::uint32_t, 4>& registers);
std::uint16_t VolumeWord(std::uint32_t serial);
// Without '-' and null characters, padded with '0' to whole groups, read as groups of up to
// four characters between white space, each group's leading hex digits as one word.
OVCORE_AUTOTEST_EXPORT std::vector<std::uint16_t> MachineWords(const std::u16string& text);
// CRC-32 (reflected polynomial 0xEDB88320) starting from 0, complemented at the end.
std::uint32_t Crc32(const std::uint8_t* bytes, std::size_t length);
// The words of the identifier from its facts: data words, checksum, mixing and masking.
OVCORE_AUTOTEST_EXPORT std::vector<std::uint16_t> DeviceIdWords(const std::array<std::uint32_t, 4>& cpuid,
                                                                std::uint32_t volumeSerial,
                                                                const AdapterList& adapters,
                                                                const std::u16string* machineGuid);
// Four upper-case hex digits per word, joined by "-".
OVCORE_AUTOTEST_EXPORT std::string DeviceIdText(const std::vector<std::uint16_t>& words);

// A machine-id file's text without its final newline; false when it cannot be read or holds
// more than the 2048 characters a GUID value may have.
bool ReadMachineIdFile(const char* path, std::u16string* text);

// The compositions the library uses.
std::string SystemVersionText();
std::string MakeDeviceIdText();
std::u16string SystemRegion();

} // namespace OVPlatform
