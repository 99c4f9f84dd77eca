#pragma once

#include "OVCoreExport.h"

#include <QString>

class OVFileBookmarkPrivate;

/// Holds access to a file the user chose, by path, for as long as the handle lives.
///
/// Each handle holds access of its own: a copy begins access again, and every begin is ended
/// once, by the next Acquire of another path, by Release or by the destructor.
class OVCORE_EXPORT OVFileBookmark
{
public:
    /// A handle that holds no access.
    OVFileBookmark();
    /// A handle that holds access to \a path.
    OVFileBookmark(const QString& path);
    /// A handle that holds access of its own to the other's path.
    OVFileBookmark(const OVFileBookmark& other);
    /// Holds access of its own to the other's path instead of the current one.
    OVFileBookmark& operator=(const OVFileBookmark& other);
    /// Gives up the access held.
    ~OVFileBookmark();

    /// Holds access to path instead of the current one; an empty path holds none.
    void Acquire(const QString& path);
    /// Gives up the access held; the path is kept.
    void Release();

    /// Records path for access in later sessions.
    static void AddBookmark(const QString& path);

private:
    OVFileBookmarkPrivate* const d;
};
