#include "OVPixelRatioRound.h"

#include <atomic>
#include <cmath>

namespace {
// Read from painting code on any thread; written once by the GUI thread at start-up.
std::atomic<double> s_pixelRatio{1.0};
} // namespace

void OVPixelRatioRound::SetPixelRatio(double ratio)
{
    // A ratio that is not a positive finite number would turn every size into nonsense.
    s_pixelRatio.store(std::isfinite(ratio) && ratio > 0.0 ? ratio : 1.0);
}

double OVPixelRatioRound::GetPixelRatio()
{
    return s_pixelRatio.load();
}

int OVPixelRatioRound::ToDevice(double logical)
{
    return static_cast<int>(std::lround(logical * s_pixelRatio.load()));
}

int OVPixelRatioRound::ToLogical(double device)
{
    return static_cast<int>(std::lround(device / s_pixelRatio.load()));
}
