#include "private/OVSystemInfo_p.h"

#include "platform/OVPlatform.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

QStringList ToStringList(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list << QString::fromStdString(text);
    return list;
}

// Where the system lists no displays itself, the toolkit's screens stand in for them.
QStringList ScreenList(bool (*query)(std::vector<OVPlatform::ScreenEntry>*),
                       std::string (*describe)(const QScreen*))
{
    std::vector<OVPlatform::ScreenEntry> entries;
    if (!query(&entries) && qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        const QScreen* primary = QGuiApplication::primaryScreen();
        for (const QScreen* screen : QGuiApplication::screens())
            entries.push_back({describe(screen), screen == primary});
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
    return ScreenList(OVPlatform::QueryDisplayModes, [](const QScreen* screen) {
        const QSize size = screen->geometry().size() * screen->devicePixelRatio();
        return std::to_string(size.width()) + 'x' + std::to_string(size.height());
    });
}

QStringList GetScreenScalings()
{
    return ScreenList(OVPlatform::QueryMonitorScales, [](const QScreen* screen) {
        return std::to_string(qRound(screen->devicePixelRatio() * 100));
    });
}
