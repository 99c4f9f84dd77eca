#include "OVPlatform.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace OVPlatform {

namespace {

const char* const kVersionNames[] = {"Unknown",      "WindowsXP",    "WindowsXPSP1",    "WindowsXPSP2",
                                     "WindowsXPSP3", "WindowsVista", "WindowsVistaSP1", "WindowsVistaSP2",
                                     "Windows7",     "Windows7SP1",  "Windows8",        "Windows8Point1",
                                     "Windows10"};
constexpr int kServer = 2;

// XORed over the identifier's words, word k with entry k % 9; a build keeps its table.
constexpr std::uint16_t kMask[9] = {0x5A3C, 0xC71E, 0x2B94, 0x8E61, 0x13D7, 0xF04A, 0x6CB2, 0x9725, 0x3E8F};

// The machine GUID value is read into a buffer of 4096 bytes of UTF-16.
constexpr std::size_t kGuidChars = 4096 / 2;

bool IsStreamSpace(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\v' || c == u'\f' || c == u'\r';
}

int HexDigit(char16_t c)
{
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

} // namespace

int MapWindowsVersion(const VersionNumbers& version)
{
    // Service packs are not looked at, and 5.1 has no value of its own.
    if (version.major == 10)
        return 12;
    static const int kSix[] = {5, 8, 10, 11};
    if (version.major == 6 && version.minor < std::size(kSix))
        return kSix[version.minor];
    if (version.major == 5 && version.minor == 2)
        return 4;
    return 0;
}

std::string OSName(int version, int type)
{
    std::string name;
    if (version >= 0 && version < int(std::size(kVersionNames)))
        name = kVersionNames[version];
    if (type == kServer)
        name += "Server";
    return name;
}

std::string VersionText(bool ok, const VersionNumbers& version)
{
    if (!ok)
        return "0.0.0";
    return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
           std::to_string(version.build);
}

FirstNonEmpty::~FirstNonEmpty()
{
    delete m_kept.load();
}

std::string FirstNonEmpty::Keep(std::string candidate)
{
    if (const std::string* kept = m_kept.load(std::memory_order_acquire))
        return *kept;
    if (candidate.empty())
        return candidate;
    // Two first callers may race; the one that stores first wins and the other answers with it.
    auto* fresh = new std::string(std::move(candidate));
    const std::string* expected = nullptr;
    if (m_kept.compare_exchange_strong(expected, fresh, std::memory_order_acq_rel))
        return *fresh;
    delete fresh;
    return *expected;
}

std::vector<std::string> PrimaryFirst(const std::vector<ScreenEntry>& entries)
{
    std::vector<std::string> texts;
    for (const ScreenEntry& entry : entries)
        texts.insert(entry.primary ? texts.begin() : texts.end(), entry.text);
    return texts;
}

HardwareAddress MakeHardwareAddress(const std::uint8_t* bytes, std::size_t length)
{
    HardwareAddress address;
    // An adapter record holds at most 8 address bytes; a longer stated length does not
    // make more of them readable.
    address.length = length < address.bytes.size() ? length : address.bytes.size();
    for (std::size_t i = 0; i < address.length; ++i)
        address.bytes[i] = bytes[i];
    return address;
}

std::uint16_t AdapterHash(const HardwareAddress& address)
{
    std::uint16_t hash = 0;
    std::size_t i = 0;
    for (; i + 1 < address.length; i += 2)
        hash = std::uint16_t(hash + (address.bytes[i] | address.bytes[i + 1] << 8));
    if (i < address.length)
        hash = std::uint16_t(hash + address.bytes[i]);
    return hash;
}

std::uint16_t ProcessorWord(const std::array<std::uint32_t, 4>& registers)
{
    std::uint16_t word = 0;
    for (std::uint32_t value : registers)
        word = std::uint16_t(word + VolumeWord(value));
    return word;
}

std::uint16_t VolumeWord(std::uint32_t serial)
{
    return std::uint16_t((serial >> 16) + serial);
}

std::vector<std::uint16_t> MachineWords(const std::u16string& text)
{
    std::u16string digits;
    for (char16_t c : text)
        if (c != u'-' && c != u'\0')
            digits += c;
    digits.append((4 - digits.size() % 4) % 4, u'0');

    // Groups as a width-limited stream extraction reads them: white space is skipped, then up
    // to four other characters form a group.
    std::vector<std::uint16_t> words;
    std::size_t i = 0;
    while (true) {
        while (i < digits.size() && IsStreamSpace(digits[i]))
            ++i;
        if (i == digits.size())
            break;
        std::uint16_t word = 0;
        bool leading = true;
        for (std::size_t end = i + 4; i < end && i < digits.size() && !IsStreamSpace(digits[i]); ++i) {
            const int digit = HexDigit(digits[i]);
            leading = leading && digit >= 0;
            if (leading)
                word = std::uint16_t(word << 4 | digit);
        }
        words.push_back(word);
    }
    return words;
}

std::uint32_t Crc32(const std::uint8_t* bytes, std::size_t length)
{
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            std::uint32_t c = n;
            for (int k = 0; k < 8; ++k)
                c = c & 1 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    std::uint32_t crc = 0;
    for (std::size_t i = 0; i < length; ++i)
        crc = table[(crc ^ bytes[i]) & 0xFF] ^ (crc >> 8);
    return ~crc;
}

std::vector<std::uint16_t> DeviceIdWords(const std::array<std::uint32_t, 4>& cpuid,
                                         std::uint32_t volumeSerial, const AdapterList& adapters,
                                         const std::u16string* machineGuid)
{
    std::uint16_t first = 0;
    std::uint16_t second = 0;
    if (adapters.ok && !adapters.first.empty()) {
        first = AdapterHash(adapters.first[0]);
        second = adapters.first.size() > 1 ? AdapterHash(adapters.first[1]) : 0;
    }
    std::vector<std::uint16_t> words = {ProcessorWord(cpuid), VolumeWord(volumeSerial),
                                        first < second ? first : second, first < second ? second : first};
    if (machineGuid) {
        const std::vector<std::uint16_t> machine = MachineWords(*machineGuid);
        words.insert(words.end(), machine.begin(), machine.end());
    }
    const std::size_t n = words.size();

    std::vector<std::uint8_t> bytes;
    for (std::uint16_t word : words) {
        bytes.push_back(std::uint8_t(word));
        bytes.push_back(std::uint8_t(word >> 8));
    }
    const std::uint32_t crc = Crc32(bytes.data(), bytes.size());
    words.push_back(std::uint16_t(crc));
    words.push_back(std::uint16_t(crc >> 16));

    // Each data word is mixed with every other one, in place, so later words see earlier
    // words already mixed.
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
            if (j != i)
                words[i] ^= words[j];
    // The high checksum word stays unmasked.
    for (std::size_t k = 0; k <= n; ++k)
        words[k] ^= kMask[k % 9];
    return words;
}

std::string DeviceIdText(const std::vector<std::uint16_t>& words)
{
    std::string text;
    char group[6];
    for (std::uint16_t word : words) {
        std::snprintf(group, sizeof group, "-%04X", unsigned(word));
        text += text.empty() ? group + 1 : group;
    }
    return text;
}

bool ReadMachineIdFile(const char* path, std::u16string* text)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    std::string content;
    content.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (file.bad())
        return false;
    // The file is 32 hex digits and a newline; the newline is no part of the GUID.
    if (!content.empty() && content.back() == '\n')
        content.pop_back();
    if (content.size() > kGuidChars)
        return false;
    text->clear();
    for (unsigned char c : content)
        *text += char16_t(c);
    return true;
}

std::string SystemVersionText()
{
    VersionNumbers version;
    const bool ok = QuerySystemVersion(&version);
    return VersionText(ok, version);
}

std::string MakeDeviceIdText()
{
    std::u16string guid;
    const bool haveGuid = QueryMachineGuid(&guid);
    return DeviceIdText(
        DeviceIdWords(QueryCpuidLeaf0(), QueryVolumeSerial(), QueryAdapters(), haveGuid ? &guid : nullptr));
}

std::u16string SystemRegion()
{
    std::u16string name;
    if (!QueryCountryName(&name))
        return u"Unknown";
    return name;
}

} // namespace OVPlatform
