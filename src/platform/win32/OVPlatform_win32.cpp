// The system facts on Windows, from the Win32 calls.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <winsock2.h>

#include <windows.h>

#include <iphlpapi.h>
#include <winnls.h>

#ifdef _MSC_VER
#include <intrin.h>
// GetVersionExW is deprecated, but its answer, shaped by the process manifest, is the one wanted.
#pragma warning(disable : 4996)
#else
#include <cpuid.h>
#endif

#include "../OVPlatform.h"

namespace OVPlatform {

namespace {

using ScaleFactorForMonitor = HRESULT(WINAPI*)(HMONITOR, int*);

BOOL CALLBACK AddMonitorScale(HMONITOR monitor, HDC, LPRECT, LPARAM data)
{
    int factor = 100;
    // Not freed: the library stays loaded for the process.
    if (HMODULE shcore = LoadLibraryW(L"Shcore.dll")) {
        if (FARPROC proc = GetProcAddress(shcore, "GetScaleFactorForMonitor"))
            reinterpret_cast<ScaleFactorForMonitor>(reinterpret_cast<void (*)()>(proc))(monitor, &factor);
    }
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info)) {
        reinterpret_cast<std::vector<ScreenEntry>*>(data)->push_back(
            {std::to_string(factor), (info.dwFlags & MONITORINFOF_PRIMARY) != 0});
    }
    return TRUE;
}

bool ReadGuid(REGSAM access, std::u16string* text, bool* opened)
{
    HKEY key = nullptr;
    *opened = RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Cryptography", 0, access, &key) ==
              ERROR_SUCCESS;
    if (!*opened)
        return false;
    wchar_t buffer[4096 / sizeof(wchar_t)];
    DWORD bytes = sizeof buffer;
    const bool read = RegQueryValueExW(key, L"MachineGuid", nullptr, nullptr, reinterpret_cast<BYTE*>(buffer),
                                       &bytes) == ERROR_SUCCESS;
    RegCloseKey(key);
    if (read)
        text->assign(reinterpret_cast<const char16_t*>(buffer), bytes / 2);
    return read;
}

} // namespace

bool QueryWindowsVersion(VersionNumbers* version)
{
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (!GetVersionExW(&info))
        return false;
    *version = {info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber};
    return true;
}

bool QuerySystemVersion(VersionNumbers* version)
{
    return QueryWindowsVersion(version);
}

bool IsWorkstation()
{
    OSVERSIONINFOEXW info{};
    info.dwOSVersionInfoSize = sizeof info;
    info.wProductType = VER_NT_WORKSTATION;
    const DWORDLONG condition = VerSetConditionMask(0, VER_PRODUCT_TYPE, VER_EQUAL);
    return VerifyVersionInfoW(&info, VER_PRODUCT_TYPE, condition) != FALSE;
}

bool QueryDisplayModes(std::vector<ScreenEntry>* modes)
{
    DISPLAY_DEVICEW device{};
    device.cb = sizeof device;
    for (DWORD i = 0; EnumDisplayDevicesW(nullptr, i, &device, 0); ++i) {
        DEVMODEW mode{};
        mode.dmSize = sizeof mode;
        if (EnumDisplaySettingsW(device.DeviceName, ENUM_CURRENT_SETTINGS, &mode)) {
            modes->push_back({std::to_string(mode.dmPelsWidth) + 'x' + std::to_string(mode.dmPelsHeight),
                              (device.StateFlags & DISPLAY_DEVICE_PRIMARY_DEVICE) != 0});
        }
        device = {};
        device.cb = sizeof device;
    }
    return true;
}

bool QueryMonitorScales(std::vector<ScreenEntry>* scales)
{
    EnumDisplayMonitors(nullptr, nullptr, AddMonitorScale, reinterpret_cast<LPARAM>(scales));
    return true;
}

std::array<std::uint32_t, 4> QueryCpuidLeaf0()
{
    std::array<std::uint32_t, 4> r{};
#ifdef _MSC_VER
    int registers[4];
    __cpuidex(registers, 0, 0);
    for (int i = 0; i < 4; ++i)
        r[i] = std::uint32_t(registers[i]);
#else
    __cpuid_count(0, 0, r[0], r[1], r[2], r[3]);
#endif
    return r;
}

std::uint32_t QueryVolumeSerial()
{
    DWORD serial = 0;
    if (!GetVolumeInformationW(L"C:\\", nullptr, 0, &serial, nullptr, nullptr, nullptr, 0))
        return 0;
    return serial;
}

AdapterList QueryAdapters()
{
    // One fixed buffer; when more adapters exist than fit, the call fails and none count.
    constexpr ULONG kBufferBytes = 22528;
    std::vector<IP_ADAPTER_INFO> buffer(kBufferBytes / sizeof(IP_ADAPTER_INFO) + 1);
    ULONG size = kBufferBytes;
    AdapterList list;
    if (GetAdaptersInfo(buffer.data(), &size) != NO_ERROR)
        return list;
    list.ok = true;
    for (const IP_ADAPTER_INFO* it = buffer.data(); it && list.first.size() < 2; it = it->Next)
        list.first.push_back(MakeHardwareAddress(it->Address, it->AddressLength));
    return list;
}

bool QueryMachineGuid(std::u16string* text)
{
    bool opened = false;
    if (ReadGuid(KEY_READ, text, &opened))
        return true;
    // A 32-bit process sees the registry's 32-bit view; the value lives in the 64-bit one.
    return opened && ReadGuid(KEY_READ | KEY_WOW64_64KEY, text, &opened);
}

bool QueryCountryName(std::u16string* name)
{
    const GEOID nation = GetUserGeoID(GEOCLASS_NATION);
    // The call is told the buffer holds 2048 characters, so it holds 2048 characters.
    wchar_t buffer[2048] = {};
    const int count = GetGeoInfoW(nation, GEO_FRIENDLYNAME, buffer, 2048, 0x0409);
    if (count == 0)
        return false;
    name->assign(reinterpret_cast<const char16_t*>(buffer), size_t(count));
    return true;
}

bool QueryFileVersion(const std::string& path, std::int64_t* size, std::int64_t* modified)
{
    const int length = MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, nullptr, 0);
    if (length <= 0)
        return false;
    std::wstring wide(size_t(length), L'\0');
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, &wide[0], length) != length ||
        !GetFileAttributesExW(wide.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)))
        return false;
    *size = std::int64_t((std::uint64_t(data.nFileSizeHigh) << 32) | data.nFileSizeLow);
    *modified = std::int64_t((std::uint64_t(data.ftLastWriteTime.dwHighDateTime) << 32) |
                             data.ftLastWriteTime.dwLowDateTime);
    return true;
}

} // namespace OVPlatform
