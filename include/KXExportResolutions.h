#pragma once

#include "OVCoreExport.h"

#include <QList>
#include <QObject>
#include <QSize>

class KXExportResolutionsPrivate;

/// The pixel dimensions offered when exporting and sharing, in the order shown to the user.
///
/// The application object creates and loads the list at start-up: from the user's
/// "exportandshareresolution.ini", or, while that file has no "Version", from the defaults the
/// host embeds as ":/ExportAndShareResolution.ini" (without them the list starts empty). Every
/// change is announced by a signal and then written to the user's file.
class OVCORE_EXPORT KXExportResolutions : public QObject
{
    Q_OBJECT
public:
    /// The list; null before the application object is created and after it is gone.
    static KXExportResolutions* GetInstance();
    /// A copy of the resolutions; empty without an instance.
    static QList<QSize> GetList();
    /// The number of resolutions; -1 without an instance.
    static int GetSize();
    /// The resolution at \a index; QSize(-1, -1) without an instance.
    /// \throws std::out_of_range ("resolution index is out of range") for an index outside
    /// the list.
    static QSize Get(int index);
    /// Inserts before the first item of greater width and returns that index; -1 without an
    /// instance.
    static int Add(const QSize& item);
    /// Inserts at \a index, clamped into the list.
    static void Add(int index, const QSize& item);
    /// Replaces the resolution at \a index; ignored for an index outside the list or an
    /// equal size.
    static void Set(int index, const QSize& item);
    /// Removes the resolution at \a index; ignored for an index outside the list.
    static void Remove(int index);

signals:
    /// A resolution was inserted at \a index.
    void Inserted(int index);
    /// The resolution at \a index was replaced.
    void Changhed(int index);
    /// The resolution at \a index was removed.
    void Removed(int index);

private:
    static void InitInstance();
    static void ReleaseInstance();
    KXExportResolutions();
    ~KXExportResolutions() override;
    Q_DISABLE_COPY(KXExportResolutions)
    template <typename Table>
    friend class KXExportList;

    KXExportResolutionsPrivate* const d;
};
