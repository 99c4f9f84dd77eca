#pragma once

#include "OVImageExport.h"

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QString>

class OVCMSProfileData;

/// An ICC colour profile, held as its raw bytes together with what its header says.
///
/// A cheap value: copies share one read-only record, so a profile may be copied freely and
/// handed between threads. A default-constructed profile is empty (not valid).
///
/// A profile is valid only when its bytes form a complete ICC profile: the header's size is
/// met, its signature is "acsp", every tag of the tag table lies within the profile, Little
/// CMS opens it, and it carries the tags that let it take part in a colour transform. A
/// profile that fails any of these is never held.
class OVIMAGE_EXPORT OVCMSProfile
{
public:
    /// ICC colour-space signatures, four characters packed big-endian.
    enum ColorSpace : quint32
    {
        RGBSpace = 0x52474220,  ///< 'RGB '
        GraySpace = 0x47524159, ///< 'GRAY'
        CMYKSpace = 0x434D594B, ///< 'CMYK'
        LabSpace = 0x4C616220   ///< 'Lab '
    };

    /// An empty profile.
    OVCMSProfile();
    /// A copy that shares the other's record.
    OVCMSProfile(const OVCMSProfile& other);
    /// Shares the other's record.
    OVCMSProfile& operator=(const OVCMSProfile& other);
    ~OVCMSProfile();

    /// Reads and checks an ICC profile file. On failure the profile becomes empty and false is
    /// returned.
    bool Load(const QString& path);
    /// The same, for a file whose header names the given colour space only: any other file is
    /// turned away after reading its 128-byte header, which makes picking the profiles of one
    /// colour space out of a folder cost little more than reading the headers.
    bool Load(const QString& path, quint32 colorSpace);
    /// The same for a profile already in memory. Bytes after the size the header gives are
    /// not part of the profile.
    bool LoadFromData(const QByteArray& data);

    /// Whether the profile holds a complete, checked ICC profile.
    bool IsValid() const;
    /// The header's colour-space signature; 0 for an empty profile.
    quint32 GetColorSpace() const;
    /// The profile's description tag (its display name); empty when it has none. Read from
    /// the profile's bytes on the first call for any of the copies.
    QString GetDescription() const;
    /// The file the profile was loaded from; empty when it came from memory.
    QString GetFilePath() const;
    /// The profile's bytes, as read.
    QByteArray GetData() const;

private:
    bool Adopt(QByteArray bytes, const QString& path);

    QExplicitlySharedDataPointer<OVCMSProfileData> d;
};
