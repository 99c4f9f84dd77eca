// The system facts on Linux: the nearest equivalents of the Windows sources.

#include "../OVPlatform.h"

#include <cstdio>
#include <ifaddrs.h>
#include <langinfo.h>
#include <linux/if_packet.h>
#include <locale.h>
#include <net/if.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace OVPlatform {

bool QueryWindowsVersion(VersionNumbers*)
{
    return false;
}

bool QuerySystemVersion(VersionNumbers* version)
{
    // The kernel release, such as "6.1.0-18-amd64"; numbers that are missing count as 0.
    utsname name;
    if (uname(&name) != 0)
        return false;
    unsigned major = 0, minor = 0, patch = 0;
    if (std::sscanf(name.release, "%u.%u.%u", &major, &minor, &patch) < 1)
        return false;
    *version = {major, minor, patch};
    return true;
}

bool IsWorkstation()
{
    return true;
}

// Displays and monitors come from the toolkit on this system.
bool QueryDisplayModes(std::vector<ScreenEntry>*)
{
    return false;
}

bool QueryMonitorScales(std::vector<ScreenEntry>*)
{
    return false;
}

std::array<std::uint32_t, 4> QueryCpuidLeaf0()
{
    std::array<std::uint32_t, 4> r{};
#if defined(__x86_64__) || defined(__i386__)
    __cpuid_count(0, 0, r[0], r[1], r[2], r[3]);
#endif
    return r;
}

std::uint32_t QueryVolumeSerial()
{
    // The root file system's id, folded to 32 bits.
    struct statvfs info;
    if (statvfs("/", &info) != 0)
        return 0;
    const unsigned long long id = info.f_fsid;
    return std::uint32_t(id ^ (id >> 32));
}

AdapterList QueryAdapters()
{
    // The link-layer entries of the interfaces come in interface index order.
    AdapterList list;
    ifaddrs* all = nullptr;
    if (getifaddrs(&all) != 0)
        return list;
    for (ifaddrs* it = all; it && list.first.size() < 2; it = it->ifa_next) {
        if (!it->ifa_addr || it->ifa_addr->sa_family != AF_PACKET || (it->ifa_flags & IFF_LOOPBACK))
            continue;
        const auto* link = reinterpret_cast<const sockaddr_ll*>(it->ifa_addr);
        list.first.push_back(MakeHardwareAddress(link->sll_addr, link->sll_halen));
    }
    freeifaddrs(all);
    list.ok = !list.first.empty();
    return list;
}

bool QueryMachineGuid(std::u16string* text)
{
    return ReadMachineIdFile("/etc/machine-id", text);
}

bool QueryCountryName(std::u16string* name)
{
#ifndef __GLIBC__
    static_cast<void>(name);
    return false;
#else
    // The English territory name of the locale the environment selects; the C locale has none.
    locale_t locale = newlocale(LC_IDENTIFICATION_MASK, "", locale_t(0));
    if (!locale)
        return false;
    const char* territory = nl_langinfo_l(_NL_IDENTIFICATION_TERRITORY, locale);
    name->clear();
    for (const char* c = territory; c && *c; ++c)
        *name += char16_t(static_cast<unsigned char>(*c));
    freelocale(locale);
    if (name->empty())
        return false;
    // Counted with its terminating null, as the Windows call counts it.
    *name += u'\0';
    return true;
#endif
}

bool QueryFileVersion(const std::string& path, std::int64_t* size, std::int64_t* modified)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    *size = status.st_size;
    *modified = std::int64_t(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec;
    return true;
}

} // namespace OVPlatform
