// The platform layer without Qt: the arithmetic against hand-computed answers, then the
// facts of the system it runs on. Built natively and, cross-compiled, run under a Windows ABI;
// it prints the facts it found so a run's log shows what the system returned.

#include "OVPlatform.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

using namespace OVPlatform;

namespace {

int s_failures = 0;

#define CHECK(condition) Check(condition, #condition, __LINE__)
#define CHECK_EQ(actual, expected) CheckEq(actual, expected, #actual, __LINE__)

void Check(bool ok, const char* what, int line)
{
    if (!ok) {
        ++s_failures;
        std::printf("FAIL line %d: %s\n", line, what);
    }
}

template <typename A, typename E>
void CheckEq(const A& actual, const E& expected, const char* what, int line)
{
    Check(actual == expected, what, line);
}

std::string Narrow(const std::u16string& text)
{
    std::string out;
    for (char16_t c : text)
        out += c == u'\0' ? std::string("\\0") : std::string(1, c < 128 ? char(c) : '?');
    return out;
}

std::string Join(const std::vector<ScreenEntry>& entries)
{
    std::string out;
    for (const ScreenEntry& entry : entries)
        out += entry.text + (entry.primary ? "(primary) " : " ");
    return out;
}

size_t Groups(const std::string& id)
{
    return id.empty() ? 0 : 1 + std::count(id.begin(), id.end(), '-');
}

const std::array<std::uint32_t, 4> kGenuineIntel = {0x16, 0x756E6547, 0x6C65746E, 0x49656E69};
const std::uint8_t kAdapterA[] = {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
const std::uint8_t kAdapterB[] = {0x52, 0x54, 0x00, 0x12, 0x34, 0x56};

void VersionsAndNames()
{
    const struct
    {
        std::uint32_t major, minor;
        int expected;
    } versions[] = {{10, 0, 12}, {6, 0, 5}, {6, 1, 8}, {6, 2, 10}, {6, 3, 11}, {6, 4, 0},
                    {5, 1, 0},   {5, 2, 4}, {5, 0, 0}, {4, 0, 0},  {11, 0, 0}};
    for (const auto& v : versions)
        CHECK_EQ(MapWindowsVersion({v.major, v.minor, 1}), v.expected);

    CHECK_EQ(OSName(8, 2), "Windows7Server");
    CHECK_EQ(OSName(12, 1), "Windows10");
    CHECK_EQ(OSName(0, 1), "Unknown");
    CHECK_EQ(OSName(13, 1), "");
    CHECK_EQ(OSName(13, 2), "Server");
    CHECK_EQ(VersionText(true, {6, 1, 7601}), "6.1.7601");
    CHECK_EQ(VersionText(false, {6, 1, 7601}), "0.0.0");

    FirstNonEmpty cache;
    CHECK_EQ(cache.Keep(OSName(13, 1)), "");
    CHECK_EQ(cache.Keep(OSName(8, 2)), "Windows7Server");
    CHECK_EQ(cache.Keep(OSName(12, 1)), "Windows7Server");

    CHECK(PrimaryFirst({{"a", false}, {"b", true}, {"c", false}}) ==
          std::vector<std::string>({"b", "a", "c"}));
    CHECK(PrimaryFirst({{"a", true}, {"b", true}}) == std::vector<std::string>({"b", "a"}));
}

void Words()
{
    CHECK_EQ(ProcessorWord(kGenuineIntel), 0x736C);
    CHECK_EQ(VolumeWord(0x12345678), 0x68AC);
    CHECK_EQ(VolumeWord(0xFFFF0001), 0x0000);

    const std::uint8_t ff[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xAB, 1, 2, 3, 4, 5};
    CHECK_EQ(AdapterHash(MakeHardwareAddress(ff, 0)), 0);
    CHECK_EQ(AdapterHash(MakeHardwareAddress(ff + 4, 1)), 0xAB);
    CHECK_EQ(AdapterHash(MakeHardwareAddress(ff, 4)), 0xFFFE);
    CHECK_EQ(AdapterHash(MakeHardwareAddress(kAdapterA, 6)), 0xB478);
    CHECK_EQ(AdapterHash(MakeHardwareAddress(kAdapterB, 5)), 0x5452 + 0x1200 + 0x34);
    // An address said to be longer than an adapter record holds counts its 8 bytes.
    CHECK_EQ(MakeHardwareAddress(ff, 10).length, 8u);
    CHECK_EQ(AdapterHash(MakeHardwareAddress(ff, 10)), 0x04AB);

    using W = std::vector<std::uint16_t>;
    CHECK(MachineWords(u"6f1d2c3b-0a4e-4B5C-9d8e-7f6a5b4c3d2e\0") ==
          W({0x6F1D, 0x2C3B, 0x0A4E, 0x4B5C, 0x9D8E, 0x7F6A, 0x5B4C, 0x3D2E}));
    CHECK(MachineWords(u"").empty());
    CHECK(MachineWords(u"abc") == W({0xABC0}));
    CHECK(MachineWords(u"12 345") == W({0x12, 0x3450, 0}));
    CHECK(MachineWords(u"zz121z23") == W({0, 0x1}));

    const std::uint8_t digits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    CHECK_EQ(Crc32(digits, 9), 0xD202D277u);
    CHECK_EQ(Crc32(digits, 0), 0xFFFFFFFFu);
}

void Identifiers()
{
    const AdapterList two = {true, {MakeHardwareAddress(kAdapterA, 6), MakeHardwareAddress(kAdapterB, 6)}};
    const AdapterList one = {true, {MakeHardwareAddress(kAdapterB, 6)}};
    const std::u16string guid = u"6f1d2c3b-0a4e-4b5c-9d8e-7f6a5b4c3d2e";
    CHECK_EQ(DeviceIdText(DeviceIdWords(kGenuineIntel, 0x12345678, two, &guid)),
             "CFB0-B472-4338-3A19-AF51-9F57-4089-9D6B-75D3-C7B2-B874-70D8-3561-223E");
    CHECK_EQ(DeviceIdText(DeviceIdWords(kGenuineIntel, 0x12345678, two, nullptr)),
             "4902-B472-4338-3A19-60A6-A175");
    CHECK_EQ(DeviceIdText(DeviceIdWords(kGenuineIntel, 0x12345678, one, nullptr)),
             "FD7A-B472-4338-8E61-BE19-CDA9");
    // Nothing readable: the mask table shows through, the high checksum word is ~0 >> 16.
    const std::u16string empty;
    CHECK_EQ(DeviceIdText(DeviceIdWords({}, 0, {}, &empty)), "5A3C-C71E-2B94-8E61-EC28-FFFF");

    const std::string path = "tst_platformlayer_machine-id";
    const struct
    {
        std::string content;
        bool readable;
        std::u16string text;
    } files[] = {{"0123456789abcdef0123456789abcdef\n", true, u"0123456789abcdef0123456789abcdef"},
                 {"", true, u""},
                 {"not hex\n\n", true, u"not hex\n"},
                 {std::string(4096, 'a'), false, u""}};
    for (const auto& file : files) {
        std::ofstream(path, std::ios::binary) << file.content;
        std::u16string text;
        CHECK_EQ(ReadMachineIdFile(path.c_str(), &text), file.readable);
        CHECK(text == file.text);
    }
    std::remove(path.c_str());
    std::u16string text;
    CHECK(!ReadMachineIdFile(path.c_str(), &text));
}

void SystemFacts()
{
    VersionNumbers version;
    const bool windows = QueryWindowsVersion(&version);
    VersionNumbers system;
    CHECK(QuerySystemVersion(&system));
    std::printf("version: %s (Windows version call %s), OSVersion %d, workstation %d\n",
                SystemVersionText().c_str(), windows ? "answered" : "not available",
                windows ? MapWindowsVersion(version) : 0, int(IsWorkstation()));
    if (windows) {
        CHECK(MapWindowsVersion(version) != 0);
        CHECK_EQ(SystemVersionText(), VersionText(true, version));
    }

    std::vector<ScreenEntry> modes, scales;
    const bool listed = QueryDisplayModes(&modes);
    CHECK_EQ(QueryMonitorScales(&scales), listed);
    std::printf("displays: %s\nmonitors: %s\n", Join(modes).c_str(), Join(scales).c_str());
    CHECK_EQ(listed, windows);
    if (listed) {
        CHECK(!modes.empty() && !scales.empty());
        for (const std::vector<ScreenEntry>* list : {&modes, &scales}) {
            const auto primary =
                std::find_if(list->begin(), list->end(), [](const ScreenEntry& e) { return e.primary; });
            CHECK(primary != list->end() && PrimaryFirst(*list).front() == primary->text);
        }
    }

    const std::array<std::uint32_t, 4> cpuid = QueryCpuidLeaf0();
    const AdapterList adapters = QueryAdapters();
    std::printf("cpuid 0: %08X %08X %08X %08X, volume serial %08X, adapters listed %d:", unsigned(cpuid[0]),
                unsigned(cpuid[1]), unsigned(cpuid[2]), unsigned(cpuid[3]), unsigned(QueryVolumeSerial()),
                int(adapters.ok));
    for (const HardwareAddress& address : adapters.first)
        std::printf(" %zu bytes", address.length);
    std::u16string guid;
    const bool haveGuid = QueryMachineGuid(&guid);
    const std::string id = MakeDeviceIdText();
    std::printf("\nmachine GUID: %s\ndevice id: %s\nregion: %s\n", haveGuid ? Narrow(guid).c_str() : "(none)",
                id.c_str(), Narrow(SystemRegion()).c_str());

    CHECK_EQ(MakeDeviceIdText(), id);
    CHECK_EQ(Groups(id), haveGuid ? 4 + MachineWords(guid).size() + 2 : 6u);
    if (windows)
        CHECK(haveGuid && Groups(id) == 14);
    const std::u16string region = SystemRegion();
    CHECK(region == u"Unknown" || (region.size() > 1 && region.back() == u'\0'));
}

} // namespace

int main()
{
    VersionsAndNames();
    Words();
    Identifiers();
    SystemFacts();
    std::printf("%s: %d failure(s)\n", s_failures ? "FAILED" : "PASSED", s_failures);
    return s_failures ? 1 : 0;
}
