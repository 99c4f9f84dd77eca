#include "OVCMSProfile.h"

#include <QFile>
#include <QSharedData>

#include <lcms2.h>

#include <memory>
#include <vector>

class OVCMSProfileData : public QSharedData
{
public:
    QByteArray bytes;
    QString filePath;
    QString description;
    quint32 colorSpace = 0;
};

namespace {

struct ProfileCloser
{
    void operator()(void* profile) const { cmsCloseProfile(static_cast<cmsHPROFILE>(profile)); }
};
using ProfileHandle = std::unique_ptr<void, ProfileCloser>;

QString ReadDescription(cmsHPROFILE profile)
{
    const cmsUInt32Number bytes = cmsGetProfileInfo(profile, cmsInfoDescription, "en", "US", nullptr, 0);
    if (bytes < sizeof(wchar_t))
        return QString();
    std::vector<wchar_t> text(bytes / sizeof(wchar_t) + 1, L'\0');
    cmsGetProfileInfo(profile, cmsInfoDescription, "en", "US", text.data(), bytes);
    return QString::fromWCharArray(text.data()).trimmed();
}

} // namespace

OVCMSProfile::OVCMSProfile()
    : d(new OVCMSProfileData)
{}

OVCMSProfile::OVCMSProfile(const OVCMSProfile& other) = default;
OVCMSProfile& OVCMSProfile::operator=(const OVCMSProfile& other) = default;
OVCMSProfile::~OVCMSProfile() = default;

bool OVCMSProfile::Load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        d = new OVCMSProfileData;
        return false;
    }
    if (!LoadFromData(file.readAll()))
        return false;
    d->filePath = path;
    return true;
}

bool OVCMSProfile::LoadFromData(const QByteArray& data)
{
    d = new OVCMSProfileData;
    if (data.isEmpty())
        return false;
    ProfileHandle profile(cmsOpenProfileFromMem(data.constData(), static_cast<cmsUInt32Number>(data.size())));
    if (!profile)
        return false;
    d->bytes = data;
    d->colorSpace = static_cast<quint32>(cmsGetColorSpace(profile.get()));
    d->description = ReadDescription(profile.get());
    return true;
}

bool OVCMSProfile::IsValid() const
{
    return !d->bytes.isEmpty();
}

quint32 OVCMSProfile::GetColorSpace() const
{
    return d->colorSpace;
}

QString OVCMSProfile::GetDescription() const
{
    return d->description;
}

QString OVCMSProfile::GetFilePath() const
{
    return d->filePath;
}

QByteArray OVCMSProfile::GetData() const
{
    return d->bytes;
}
