#pragma once

#include "platform/OVPlatform.h"
#include "private/OVAutotestExport_p.h"

#include <QString>
#include <QStringList>

#include <vector>

// Facts about the machine and the system for the statistics, computed from the platform
// layer (src/platform/) each time they are asked for.

// The device identifier: 16-bit words from the processor, the system volume, the first two
// network adapters and the machine GUID, a checksum, mixed and masked, written as groups of
// four upper-case hex digits joined by "-" (14 groups normally, 6 without a machine GUID).
// Stable across runs on one machine; never fails.
OVCORE_AUTOTEST_EXPORT QString MakeDeviceId();

// The user's country name in English as the system gives it (the system's count includes
// the terminating null, and so does the string), or "Unknown".
OVCORE_AUTOTEST_EXPORT QString GetSystemRegion();

// One "<width>x<height>" entry per display, in device pixels, the primary display first.
OVCORE_AUTOTEST_EXPORT QStringList GetScreenResolutions();

// One scale factor in percent per monitor ("100", "150", ...), the primary monitor first.
OVCORE_AUTOTEST_EXPORT QStringList GetScreenScalings();

// Where the system lists no displays itself, the two lists above come from the toolkit's
// screens: from this copy, which the GUI thread keeps current (OVScreenTracker), so that any
// thread may read them. Empty until it is set.
OVCORE_AUTOTEST_EXPORT void SetToolkitScreens(std::vector<OVPlatform::ScreenEntry> resolutions,
                                              std::vector<OVPlatform::ScreenEntry> scalings);
