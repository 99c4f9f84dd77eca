#pragma once

#include "OVCoreExport.h"

#include <QList>
#include <QObject>

class KXExportSizesPrivate;

/// The file sizes in bytes offered when exporting and sharing (upload limits), in the order
/// shown to the user.
///
/// The application object creates and loads the list at start-up: from the user's
/// "exportandsharesize.ini", or, while that file has no "Version", from the defaults the host
/// embeds as ":/ExportAndShareSize.ini" (without them the list starts empty). Every change is
/// announced by a signal and then written to the user's file.
class OVCORE_EXPORT KXExportSizes : public QObject
{
    Q_OBJECT
public:
    /// The list; null before the application object is created and after it is gone.
    static KXExportSizes* GetInstance();
    /// A copy of the sizes; empty without an instance.
    static QList<qint64> GetList();
    /// The number of sizes; -1 without an instance.
    static int GetSize();
    /// The size at \a index; -1 without an instance.
    /// \throws std::out_of_range ("size index is out of range") for an index outside the list.
    static qint64 Get(int index);
    /// Inserts before the first greater size and returns that index; -1 without an instance.
    static int Add(qint64 item);
    /// Inserts at \a index, clamped into the list.
    static void Add(int index, qint64 item);
    /// Replaces the size at \a index; ignored for an index outside the list or an equal size.
    static void Set(int index, qint64 item);
    /// Removes the size at \a index; ignored for an index outside the list.
    static void Remove(int index);

signals:
    /// A size was inserted at \a index.
    void Inserted(int index);
    /// The size at \a index was replaced.
    void Changhed(int index);
    /// The size at \a index was removed.
    void Removed(int index);

private:
    static void InitInstance();
    static void ReleaseInstance();
    KXExportSizes();
    ~KXExportSizes() override;
    Q_DISABLE_COPY(KXExportSizes)
    template <typename Table>
    friend class KXExportList;

    KXExportSizesPrivate* const d;
};
