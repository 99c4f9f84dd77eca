#include "private/OVCMSManager_p.h"

#include <QDir>
#include <QStringList>

OVCMSManagerPrivate::~OVCMSManagerPrivate()
{
    qDeleteAll(profiles);
}

int OVCMSManagerPrivate::Discover(const QString& folder)
{
    std::lock_guard<std::mutex> guard(lock);
    QList<OVCMSProfile*> old;
    old.swap(profiles);
    qDeleteAll(old);

    // Name filters match in any case; the name order is case-sensitive.
    const QStringList names =
        QDir(folder).entryList({QStringLiteral("*.icc"), QStringLiteral("*.icm")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        OVCMSProfile profile;
        // Files of other colour spaces are turned away after their header. Load() also refuses
        // an RGB profile from which Little CMS cannot build a transform (neither matrix and
        // curves nor a lookup table), so such a file takes no index.
        if (profile.Load(folder + QDir::separator() + name, OVCMSProfile::RGBSpace) &&
            profile.GetColorSpace() == OVCMSProfile::RGBSpace)
            profiles.append(new OVCMSProfile(profile));
    }
    return profiles.size();
}
