#pragma once

#include "OVCoreExport.h"

#include <QList>
#include <QObject>

class KXExportSizesPrivate;

// The file sizes in bytes offered when exporting and sharing (upload limits), in the order
// shown to the user. The application object creates and loads the list at start-up: from the
// user's "exportandsharesize.ini", or from the shipped defaults when that file has no
// "Version". Every change is announced by a signal and then written to the user's file.
class OVCORE_EXPORT KXExportSizes : public QObject
{
    Q_OBJECT
public:
    // Null before the application object is created and after it is gone.
    static KXExportSizes* GetInstance();
    // Empty without an instance.
    static QList<qint64> GetList();
    // -1 without an instance.
    static int GetSize();
    // -1 without an instance; throws std::out_of_range ("size index is out of range") for an
    // index outside the list.
    static qint64 Get(int index);
    // Inserts before the first greater size and returns that index; -1 without an instance.
    static int Add(qint64 item);
    // Inserts at index, clamped into the list.
    static void Add(int index, qint64 item);
    // Ignored for an index outside the list or an equal size.
    static void Set(int index, qint64 item);
    // Ignored for an index outside the list.
    static void Remove(int index);

signals:
    void Inserted(int index);
    void Changhed(int index);
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
