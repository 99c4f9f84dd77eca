#include "OVProfileFixtures.h"

#include <lcms2.h>

namespace OVTest {

QByteArray MakeProfile(const QString& kind, const QString& description)
{
    cmsToneCurve* gamma = cmsBuildGamma(nullptr, 1.8);
    cmsToneCurve* curves[4] = {gamma, gamma, gamma, gamma};
    cmsHPROFILE profile = nullptr;
    if (kind == QLatin1String("sRGB")) {
        profile = cmsCreate_sRGBProfile();
    } else if (kind == QLatin1String("wide")) {
        const cmsCIExyYTRIPLE primaries = {
            {0.7347, 0.2653, 1.0}, {0.1152, 0.8264, 1.0}, {0.1566, 0.0177, 1.0}};
        profile = cmsCreateRGBProfile(cmsD50_xyY(), &primaries, curves);
    } else if (kind == QLatin1String("gray")) {
        profile = cmsCreateGrayProfile(cmsD50_xyY(), gamma);
    } else if (kind == QLatin1String("lab")) {
        profile = cmsCreateLab4Profile(nullptr);
    } else {
        profile = cmsCreateLinearizationDeviceLink(cmsSigCmykData, curves);
    }
    cmsFreeToneCurve(gamma);
    if (!description.isEmpty()) {
        cmsMLU* text = cmsMLUalloc(nullptr, 1);
        cmsMLUsetWide(text, "en", "US", description.toStdWString().c_str());
        cmsWriteTag(profile, cmsSigProfileDescriptionTag, text);
        cmsMLUfree(text);
    }
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    QByteArray bytes(int(size), Qt::Uninitialized);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

} // namespace OVTest
