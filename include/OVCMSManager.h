#pragma once

#include "OVCMSProfile.h"
#include "OVCoreExport.h"

#include <QObject>
#include <QString>

class OVCMSManagerPrivate;

/// The process-wide list of the RGB colour profiles the user may choose the working colour
/// space from, and the index of the working profile.
///
/// InitInstance(folder) reads the folder once: every file named "*.icc" or "*.icm" (in any
/// case), in name order (case-sensitive, so "B.icm" comes before "a.icc"), that is a complete
/// ICC profile of RGB data; other files are skipped without a word. Index i is the i-th such
/// profile, not the i-th file. The manager reads and writes no settings: the host stores the
/// working index itself and hands it back through SetWorkingRGBIndex.
///
/// Every operation may be called from any thread. WorkingRGBIndexChanged is emitted after the
/// manager's lock is released, so a receiver may call back into it.
///
/// For hosts: the manager is made once per process and released once, at exit.
/// InitInstance after ReleaseInstance does nothing, and GetInstance then returns null, so
/// take the instance from GetInstance each time instead of keeping the pointer.
class OVCORE_EXPORT OVCMSManager : public QObject
{
    Q_OBJECT
public:
    /// Creates the manager and lists the RGB profiles of \a folder. Does nothing when an
    /// instance exists (the folder is then ignored) or has been released.
    static void InitInstance(const QString& folder);
    /// The manager, or null before InitInstance() and after ReleaseInstance().
    static OVCMSManager* GetInstance();
    /// Deletes the manager.
    static void ReleaseInstance();

    /// The number of RGB profiles found.
    int GetRGBProfileCount() const;
    /// The profile at index, or an empty profile when index is out of range.
    OVCMSProfile GetRGBProfile(int index) const;
    /// The index of the working profile; -1 until something sets it.
    int GetWorkingRGBIndex() const;
    /// Stores any index, in range or not, and announces it when it differs from the stored one.
    void SetWorkingRGBIndex(int index);

signals:
    /// The working profile's index changed.
    void WorkingRGBIndexChanged(int index);

private:
    OVCMSManager();
    ~OVCMSManager() override;
    Q_DISABLE_COPY(OVCMSManager)

    OVCMSManagerPrivate* const d;
};
