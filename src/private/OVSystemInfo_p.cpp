#include "private/OVSystemInfo_p.h"

#include <QMutex>

namespace {

QStringList ToStringList(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list << QString::fromStdString(text);
    return list;
}

struct ToolkitScreens
{
    QMutex mutex;
    std::vector<OVPlatform::ScreenEntry> resolutions;
    std::vector<OVPlatform::ScreenEntry> scalings;

    static ToolkitScreens& Get()
    {
        static ToolkitScreens screens;
        return screens;
    }
};

QStringList ScreenList(bool (*query)(std::vector<OVPlatform::ScreenEntry>*),
                       std::vector<OVPlatform::ScreenEntry> ToolkitScreens::*copy)
{
    std::vector<OVPlatform::ScreenEntry> entries;
    if (!query(&entries)) {
        ToolkitScreens& toolkit = ToolkitScreens::Get();
        QMutexLocker lock(&toolkit.mutex);
        entries = toolkit.*copy;
    }
    return ToStringList(OVPlatform::PrimaryFirst(entries));
}

} // namespace

QString MakeDeviceId()
{
    return QString::fromStdString(OVPlatform::MakeDeviceIdText());
}

QString GetSystemRegion()
{
    const std::u16string region = OVPlatform::SystemRegion();
    return QString::fromUtf16(region.data(), int(region.size()));
}

QStringList GetScreenResolutions()
{
    return ScreenList(OVPlatform::QueryDisplayModes, &ToolkitScreens::resolutions);
}

QStringList GetScreenScalings()
{
    return ScreenList(OVPlatform::QueryMonitorScales, &ToolkitScreens::scalings);
}

void SetToolkitScreens(std::vector<OVPlatform::ScreenEntry> resolutions,
                       std::vector<OVPlatform::ScreenEntry> scalings)
{
    ToolkitScreens& toolkit = ToolkitScreens::Get();
    QMutexLocker lock(&toolkit.mutex);
    toolkit.resolutions = std::move(resolutions);
    toolkit.scalings = std::move(scalings);
}
