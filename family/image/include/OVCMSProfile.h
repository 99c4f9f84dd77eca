#pragma once

#include "OVImageExport.h"

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>

class OVCMSProfileData;

// An ICC colour profile, held as its raw bytes together with what its header says.
// A copyable value; a default-constructed profile is empty (not valid).
class OVIMAGE_EXPORT OVCMSProfile
{
public:
    // ICC colour-space signatures, four characters packed big-endian.
    enum ColorSpace : quint32
    {
        RGBSpace = 0x52474220,  // 'RGB '
        GraySpace = 0x47524159, // 'GRAY'
        CMYKSpace = 0x434D594B, // 'CMYK'
        LabSpace = 0x4C616220   // 'Lab '
    };

    OVCMSProfile();
    OVCMSProfile(const OVCMSProfile& other);
    OVCMSProfile& operator=(const OVCMSProfile& other);
    ~OVCMSProfile();

    // Reads and parses an ICC profile file. On failure the profile becomes empty and false is
    // returned.
    bool Load(const QString& path);
    // The same for a profile already in memory.
    bool LoadFromData(const QByteArray& data);

    bool IsValid() const;
    // The header's colour-space signature; 0 for an empty profile.
    quint32 GetColorSpace() const;
    // The profile's description tag (its display name); empty when it has none.
    QString GetDescription() const;
    // The file the profile was loaded from; empty when it came from memory.
    QString GetFilePath() const;
    // The profile's bytes, as read.
    QByteArray GetData() const;

private:
    QSharedDataPointer<OVCMSProfileData> d;
};
