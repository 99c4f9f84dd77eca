#pragma once

#include "OVUtilsExport.h"

/// The device pixel ratio of the process, set once at start-up by the application object, and
/// the rounding of logical sizes to device pixels that depends on it.
class OVUTILS_EXPORT OVPixelRatioRound
{
public:
    /// Sets the process's device pixel ratio.
    static void SetPixelRatio(double ratio);
    /// The process's device pixel ratio.
    static double GetPixelRatio();

    /// Logical length to device pixels, rounded to the nearest whole pixel.
    static int ToDevice(double logical);
    /// Device pixels to a logical length, rounded to the nearest whole unit.
    static int ToLogical(double device);

    OVPixelRatioRound() = delete;
};
