// The recent and favourite lists as stored in the user settings: any bytes may stand there.

#include "private/OVRecentList_p.h"

#include <cstdint>
#include <cstdlib>
#include <limits>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    for (int limit : {0, 15, std::numeric_limits<int>::max()}) {
        const QStringList paths = OVRecentList::Decode(bytes, limit);
        if (paths.size() > limit)
            abort();
        // Every string comes from the bytes present: its length is never believed beyond them.
        qint64 units = 0;
        for (const QString& path : paths)
            units += path.size();
        if (units * 2 > qint64(size))
            abort();
        // What was read is written back and read again unchanged.
        if (OVRecentList::Decode(OVRecentList::Encode(paths), limit) != paths)
            abort();
    }
    return 0;
}
