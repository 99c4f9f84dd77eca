#pragma once

#include "OVCMSProfile.h"
#include "private/OVAutotestExport_p.h"

#include <QList>
#include <QString>

#include <mutex>

class OVCORE_AUTOTEST_EXPORT OVCMSManagerPrivate
{
public:
    OVCMSManagerPrivate() = default;
    ~OVCMSManagerPrivate();
    Q_DISABLE_COPY(OVCMSManagerPrivate)

    // Replaces the list with the RGB profiles of folder, in name order; returns their number.
    // Takes the lock for its whole length.
    int Discover(const QString& folder);

    mutable std::mutex lock;
    // Owned; only Discover and the destructor change the list.
    QList<OVCMSProfile*> profiles;
    int workingIndex = -1;
};
