#pragma once

#include "private/OVAutotestExport_p.h"
#include <QByteArray>
#include <QStringList>

// The stored form of a file list in the user settings: a QDataStream (default version,
// big-endian) holding a 32-bit signed count followed by that many strings.
namespace OVRecentList {

OVCORE_AUTOTEST_EXPORT QByteArray Encode(const QStringList& paths);

// At most limit strings of the stored list, in order. The bytes come from a file the user
// can edit: a count or a string length is never trusted beyond the bytes present, and a
// list that breaks off keeps the strings read before the break.
OVCORE_AUTOTEST_EXPORT QStringList Decode(const QByteArray& bytes, int limit);

} // namespace OVRecentList
