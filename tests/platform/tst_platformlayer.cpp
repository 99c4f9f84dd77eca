// The platform layer without Qt: the arithmetic against hand-computed answers, then the
// facts of the system it runs on. Built natively and, cross-compiled, run under a Windows ABI;
// it prints the facts it found so a run's log shows what the system returned.

#include "OVPlatform.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

using namespace OVPlatform;
using Texts = std::vector<std::string>;
using Words = std::vector<std::uint16_t>;

namespace {

int s_failures = 0;

#define CHECK(condition)                                                                                     \
    static_cast<void>((condition) || (std::printf("FAIL line %d: %s\n", __LINE__, #condition), ++s_failures))

std::string Narrow(const std::u16string& text)
{
    std::string out;
    for (char16_t c : text)
        out += c == u'\0' ? std::string("\\0") : std::string(1, c < 128 ? char(c) : '?');
    return out;
}

const std::array<std::uint32_t, 4> kGenuineIntel = {0x16, 0x756E6547, 0x6C65746E, 0x49656E69};
const std::uint8_t kBytes[] = {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 0x52, 0x54, 0x00, 0x12, 0x34, 0x56};

void Arithmetic()
{
    const int versions[][3] = {{10, 0, 12}, {6, 0, 5}, {6, 1, 8}, {6, 2, 10}, {6, 3, 11}, {6, 4, 0},
                               {5, 1, 0},   {5, 2, 4}, {5, 0, 0}, {4, 0, 0},  {11, 0, 0}};
    for (const auto& v : versions)
        CHECK(MapWindowsVersion({std::uint32_t(v[0]), std::uint32_t(v[1]), 1}) == v[2]);
    CHECK(OSName(12, 1) == "Windows10" && OSName(0, 1) == "Unknown" && OSName(13, 2) == "Server");
    CHECK(VersionText(true, {6, 1, 7601}) == "6.1.7601" && VersionText(false, {6, 1, 7601}) == "0.0.0");
    FirstNonEmpty cache;
    CHECK(cache.Keep(OSName(13, 1)).empty() && cache.Keep(OSName(8, 2)) == "Windows7Server");
    CHECK(cache.Keep(OSName(12, 1)) == "Windows7Server");
    CHECK(PrimaryFirst({{"a", false}, {"b", true}, {"c", false}, {"d", true}}) ==
          Texts({"d", "b", "a", "c"}));

    CHECK(ProcessorWord(kGenuineIntel) == 0x736C);
    CHECK(VolumeWord(0x12345678) == 0x68AC && VolumeWord(0xFFFF0001) == 0);
    const std::uint8_t ff[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xAB, 1, 2, 3, 4, 5};
    CHECK(AdapterHash(MakeHardwareAddress(ff, 0)) == 0 &&
          AdapterHash(MakeHardwareAddress(ff + 4, 1)) == 0xAB);
    CHECK(AdapterHash(MakeHardwareAddress(ff, 4)) == 0xFFFE &&
          AdapterHash(MakeHardwareAddress(kBytes, 5)) == 0x5678);
    // An address said to be longer than an adapter record holds counts its 8 bytes.
    CHECK(MakeHardwareAddress(ff, 10).length == 8 && AdapterHash(MakeHardwareAddress(ff, 10)) == 0x04AB);

    CHECK(MachineWords(u"6f1d2c3b-0a4e-4B5C-9d8e-7f6a5b4c3d2e\0") ==
          Words({0x6F1D, 0x2C3B, 0x0A4E, 0x4B5C, 0x9D8E, 0x7F6A, 0x5B4C, 0x3D2E}));
    CHECK(MachineWords(u"").empty() && MachineWords(u"abc") == Words({0xABC0}));
    CHECK(MachineWords(u"12 345") == Words({0x12, 0x3450, 0}) && MachineWords(u"zz121z23") == Words({0, 1}));
    const std::uint8_t digits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    CHECK(Crc32(digits, 9) == 0xD202D277u && Crc32(digits, 0) == 0xFFFFFFFFu);

    const AdapterList two = {true, {MakeHardwareAddress(kBytes, 6), MakeHardwareAddress(kBytes + 6, 6)}};
    const AdapterList one = {true, {MakeHardwareAddress(kBytes + 6, 6)}};
    const std::u16string guid = u"6f1d2c3b-0a4e-4b5c-9d8e-7f6a5b4c3d2e", none;
    CHECK(DeviceIdText(DeviceIdWords(kGenuineIntel, 0x12345678, two, &guid)) ==
          "CFB0-B472-4338-3A19-AF51-9F57-4089-9D6B-75D3-C7B2-B874-70D8-3561-223E");
    CHECK(DeviceIdText(DeviceIdWords(kGenuineIntel, 0x12345678, two, nullptr)) ==
          "4902-B472-4338-3A19-60A6-A175");
    CHECK(DeviceIdText(DeviceIdWords(kGenuineIntel, 0x12345678, one, nullptr)) ==
          "FD7A-B472-4338-8E61-BE19-CDA9");
    // Nothing readable: the mask table shows through, the high checksum word is ~0 >> 16.
    CHECK(DeviceIdText(DeviceIdWords({}, 0, {}, &none)) == "5A3C-C71E-2B94-8E61-EC28-FFFF");
}

void MachineIdFiles()
{
    const char* path = "tst_platformlayer_machine-id";
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
        CHECK(ReadMachineIdFile(path, &text) == file.readable && text == file.text);
    }
    std::int64_t size = 0, modified = 0, before = 0;
    CHECK(QueryFileVersion(path, &size, &before) && size == 4096);
    std::ofstream(path, std::ios::binary | std::ios::app) << "b";
    CHECK(QueryFileVersion(path, &size, &modified) && size == 4097);
    std::remove(path);
    std::u16string text;
    CHECK(!ReadMachineIdFile(path, &text) && !QueryFileVersion(path, &size, &modified) &&
          !QueryFileVersion(".", &size, &modified));
}

void SystemFacts()
{
    VersionNumbers version, system;
    const bool windows = QueryWindowsVersion(&version);
    CHECK(QuerySystemVersion(&system));
    std::printf("version %s, OSVersion %d, workstation %d\n", SystemVersionText().c_str(),
                windows ? MapWindowsVersion(version) : -1, int(IsWorkstation()));
    CHECK(!windows || (MapWindowsVersion(version) != 0 && SystemVersionText() == VersionText(true, version)));

    std::vector<ScreenEntry> lists[2];
    CHECK(QueryDisplayModes(&lists[0]) == windows && QueryMonitorScales(&lists[1]) == windows);
    for (const std::vector<ScreenEntry>& list : lists) {
        for (const ScreenEntry& entry : list)
            std::printf("%s%s ", entry.text.c_str(), entry.primary ? " (primary)" : "");
        const auto primary =
            std::find_if(list.begin(), list.end(), [](const ScreenEntry& e) { return e.primary; });
        CHECK(!windows || (primary != list.end() && PrimaryFirst(list).front() == primary->text));
        std::printf("\n");
    }

    std::u16string guid;
    const bool haveGuid = QueryMachineGuid(&guid);
    const std::string id = MakeDeviceIdText();
    const std::u16string region = SystemRegion();
    std::printf("machine GUID %s\ndevice id %s\nregion %s\n", haveGuid ? Narrow(guid).c_str() : "(none)",
                id.c_str(), Narrow(region).c_str());

    CHECK(MakeDeviceIdText() == id);
    const size_t groups = 1 + std::count(id.begin(), id.end(), '-');
    CHECK(groups == (haveGuid ? 6 + MachineWords(guid).size() : 6u) && (!windows || groups == 14));
    CHECK(region == u"Unknown" || (region.size() > 1 && region.back() == u'\0'));
}

} // namespace

int main()
{
    Arithmetic();
    MachineIdFiles();
    SystemFacts();
    std::printf("%s: %d failure(s)\n", s_failures ? "FAILED" : "PASSED", s_failures);
    return s_failures ? 1 : 0;
}
