#pragma once

#include <QImage>
#include <QString>

class QMenu;

// The working colour profile: the RGB profiles of the system's colour folder, the stored
// choice handed back at start-up, and a View menu that changes it and keeps it under
// "ColorManagement/WorkingProfileID".
namespace OVDemoColour {

// "/usr/share/color/icc" on Linux, the Windows colour folder on Windows.
QString SystemFolder();
// Creates the profile list on the system folder and restores the stored working profile.
void InitInstance();
void AddMenu(QMenu* view);
// The image converted into the working profile and tagged with it (an image without a colour
// space counts as sRGB); the image as it is when no profile is chosen; a null image and the
// reason when the profile cannot be used.
QImage ToWorkingSpace(const QImage& image, QString* error);

} // namespace OVDemoColour
