#include "OVCMSProfile.h"

#include <QFile>
#include <QSharedData>
#include <QtEndian>

#include <lcms2.h>

#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

// One loaded profile, shared by all copies of it. Nothing changes it once it is built except
// the description, which is read on first request and guarded by its once flag.
class OVCMSProfileData : public QSharedData
{
public:
    OVCMSProfileData() = default;
    OVCMSProfileData(const OVCMSProfileData&) = delete;
    OVCMSProfileData& operator=(const OVCMSProfileData&) = delete;

    QByteArray bytes;
    QString filePath;
    quint32 colorSpace = 0;
    std::once_flag descriptionRead;
    QString description;
};

namespace {

// The fixed header; the tag table follows it: a count, then 12 bytes per tag (signature,
// offset, size).
constexpr qint64 HeaderSize = 128;
constexpr qint64 TagTableEntry = 12;
constexpr qint64 FirstRead = 4096;

struct ProfileCloser
{
    void operator()(void* profile) const { cmsCloseProfile(static_cast<cmsHPROFILE>(profile)); }
};
using ProfileHandle = std::unique_ptr<void, ProfileCloser>;

quint32 ReadUInt32(const char* at)
{
    return qFromBigEndian<quint32>(at);
}

quint32 HeaderColorSpace(const char* header)
{
    return ReadUInt32(header + 16);
}

// The size a header gives its profile when the header has the profile signature and room
// for the tag count; 0 otherwise. Needs HeaderSize bytes.
qint64 DeclaredSize(const char* header)
{
    const qint64 size = ReadUInt32(header);
    if (size < HeaderSize + 4 || size > std::numeric_limits<int>::max() ||
        std::memcmp(header + 36, "acsp", 4) != 0)
        return 0;
    return size;
}

// A localized text tag ('mluc') whose record count does not fit the tag. Little CMS would
// allocate for the count as given, which a few bytes can make hundreds of megabytes.
bool IsLyingText(const char* tag, qint64 size)
{
    if (size < 8 || ReadUInt32(tag) != 0x6D6C7563) // 'mluc'
        return false;
    return size < 16 || ReadUInt32(tag + 12) != 12 || qint64(ReadUInt32(tag + 8)) * 12 > size - 16;
}

// Every tag of the tag table must lie within the profile (Little CMS would quietly drop a
// tag that does not, and open what is left), and no text tag may overstate its length.
bool TagsWithin(const QByteArray& bytes)
{
    const char* data = bytes.constData();
    const qint64 size = bytes.size();
    const qint64 count = ReadUInt32(data + HeaderSize);
    if (count > (size - HeaderSize - 4) / TagTableEntry)
        return false;
    for (qint64 i = 0; i < count; ++i) {
        const char* entry = data + HeaderSize + 4 + i * TagTableEntry;
        const qint64 offset = ReadUInt32(entry + 4);
        const qint64 length = ReadUInt32(entry + 8);
        if (offset + length > size || IsLyingText(data + offset, length))
            return false;
    }
    return true;
}

// A complete profile: the checks above, then Little CMS must open it and find the tags a
// transform needs (matrix and curves, or lookup tables in one direction or the other).
bool IsComplete(const QByteArray& bytes)
{
    if (bytes.size() < HeaderSize + 4 || DeclaredSize(bytes.constData()) != bytes.size() ||
        !TagsWithin(bytes))
        return false;
    ProfileHandle profile(cmsOpenProfileFromMem(bytes.constData(), cmsUInt32Number(bytes.size())));
    return profile && (cmsIsMatrixShaper(profile.get()) ||
                       cmsIsCLUT(profile.get(), INTENT_PERCEPTUAL, LCMS_USED_AS_INPUT) ||
                       cmsIsCLUT(profile.get(), INTENT_PERCEPTUAL, LCMS_USED_AS_OUTPUT));
}

// The bytes of the profile in a file, or nothing when the file cannot hold one. With a
// colour space given, a file whose header names another one is turned away after the
// header. The first read takes up to one page, which holds the whole of most RGB profiles.
QByteArray ReadProfileFile(const QString& path, const quint32* colorSpace)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return QByteArray();
    char start[FirstRead];
    const qint64 got = file.read(start, FirstRead);
    if (got < HeaderSize)
        return QByteArray();
    const qint64 size = DeclaredSize(start);
    if (size == 0 || (colorSpace && HeaderColorSpace(start) != *colorSpace))
        return QByteArray();
    if (size <= got)
        return QByteArray(start, int(size));
    if (got < FirstRead || size > file.size())
        return QByteArray();
    QByteArray bytes(start, int(got));
    bytes.resize(int(size));
    if (file.read(bytes.data() + got, size - got) != size - got)
        return QByteArray();
    return bytes;
}

// Every empty profile shares one record.
const QExplicitlySharedDataPointer<OVCMSProfileData>& Empty()
{
    static const QExplicitlySharedDataPointer<OVCMSProfileData> empty(new OVCMSProfileData);
    return empty;
}

QString ReadDescription(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return QString();
    ProfileHandle profile(cmsOpenProfileFromMem(bytes.constData(), cmsUInt32Number(bytes.size())));
    if (!profile)
        return QString();
    const cmsUInt32Number size = cmsGetProfileInfo(profile.get(), cmsInfoDescription, "en", "US", nullptr, 0);
    if (size < sizeof(wchar_t))
        return QString();
    std::vector<wchar_t> text(size / sizeof(wchar_t) + 1, L'\0');
    cmsGetProfileInfo(profile.get(), cmsInfoDescription, "en", "US", text.data(), size);
    return QString::fromWCharArray(text.data()).trimmed();
}

} // namespace

OVCMSProfile::OVCMSProfile()
    : d(Empty())
{}

OVCMSProfile::OVCMSProfile(const OVCMSProfile& other) = default;
OVCMSProfile& OVCMSProfile::operator=(const OVCMSProfile& other) = default;
OVCMSProfile::~OVCMSProfile() = default;

bool OVCMSProfile::Load(const QString& path)
{
    return Adopt(ReadProfileFile(path, nullptr), path);
}

bool OVCMSProfile::Load(const QString& path, quint32 colorSpace)
{
    return Adopt(ReadProfileFile(path, &colorSpace), path);
}

bool OVCMSProfile::LoadFromData(const QByteArray& data)
{
    const qint64 size = data.size() >= HeaderSize ? DeclaredSize(data.constData()) : 0;
    return Adopt(size > 0 && size <= data.size() ? data.left(int(size)) : QByteArray(), QString());
}

bool OVCMSProfile::Adopt(QByteArray bytes, const QString& path)
{
    if (!IsComplete(bytes)) {
        d = Empty();
        return false;
    }
    auto* data = new OVCMSProfileData;
    data->colorSpace = HeaderColorSpace(bytes.constData());
    data->bytes = std::move(bytes);
    data->filePath = path;
    d = data;
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
    OVCMSProfileData* data = d.data();
    std::call_once(data->descriptionRead, [data] { data->description = ReadDescription(data->bytes); });
    return data->description;
}

QString OVCMSProfile::GetFilePath() const
{
    return d->filePath;
}

QByteArray OVCMSProfile::GetData() const
{
    return d->bytes;
}
