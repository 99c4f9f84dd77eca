#include "private/OVScreenTracker_p.h"

#include "private/OVSystemInfo_p.h"

#include <QGuiApplication>
#include <QScreen>

OVScreenTracker::OVScreenTracker()
{
    auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (!app)
        return;
    connect(app, &QGuiApplication::screenAdded, this, &OVScreenTracker::OnScreenAdded);
    // A screen that goes is already out of the list when this is signalled.
    connect(app, &QGuiApplication::screenRemoved, this, &OVScreenTracker::OnScreensChanged);
    connect(app, &QGuiApplication::primaryScreenChanged, this, &OVScreenTracker::OnScreensChanged);
    for (QScreen* screen : QGuiApplication::screens())
        Follow(screen);
    OnScreensChanged();
}

OVScreenTracker::~OVScreenTracker()
{
    SetToolkitScreens({}, {});
}

void OVScreenTracker::OnScreenAdded(QScreen* screen)
{
    Follow(screen);
    OnScreensChanged();
}

// A change of scale comes with a change of the logical resolution, and of the geometry where
// the toolkit scales.
void OVScreenTracker::Follow(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &OVScreenTracker::OnScreensChanged);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &OVScreenTracker::OnScreensChanged);
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, &OVScreenTracker::OnScreensChanged);
}

void OVScreenTracker::OnScreensChanged()
{
    std::vector<OVPlatform::ScreenEntry> resolutions, scalings;
    const QScreen* primary = QGuiApplication::primaryScreen();
    for (const QScreen* screen : QGuiApplication::screens()) {
        const qreal ratio = screen->devicePixelRatio();
        const QSize size = screen->geometry().size() * ratio;
        resolutions.push_back(
            {std::to_string(size.width()) + 'x' + std::to_string(size.height()), screen == primary});
        scalings.push_back({std::to_string(qRound(ratio * 100)), screen == primary});
    }
    SetToolkitScreens(std::move(resolutions), std::move(scalings));
}
