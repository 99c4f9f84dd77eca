#pragma once

#include "private/OVAutotestExport_p.h"

#include <QString>

#include <mutex>

class OVFileBookmarkPrivate
{
public:
    QString path;
    bool acquired = false;
};

// The one store of file access grants of the process. On a platform that restricts file
// access it keeps persistent grants; here its operations have nothing to do, but they are still
// called at the moments a handle gains and gives up access.
class FileBookmarkStore
{
public:
    enum Operation
    {
        BeginAccess,
        EndAccess,
        AddBookmark
    };

    static FileBookmarkStore& Instance();

    void Begin(const QString& path);
    void End(const QString& path);
    void Add(const QString& path);

    // For tests: observer, when set, is told of every operation with its path. Null stops it.
    using Observer = void (*)(Operation operation, const QString& path);
    static OVCORE_AUTOTEST_EXPORT void SetObserver(Observer observer);

private:
    void Notify(Operation operation, const QString& path) const;

    [[maybe_unused]] std::mutex m_mutex; // guards the grants where there are any; never locked here
    Observer m_observer = nullptr;
};
