#pragma once

#include "private/OVAutotestExport_p.h"
#include <QByteArray>
#include <QString>

// The telemetry configuration that the host embeds as the resource ":core": the hexadecimal
// text of an XML document whose first "main" element holds the values, e.g.
//     <main><node1><A0>key</A0><A2>url</A2>...</node1></main>
// The library asks for "node1/A0" (access key), "node1/A2" and "node1/A3" (endpoints) and
// "node1/A4" and "node1/A5" (form field names).

// The text of the element that path names below the first "main" element, or a null string
// when ":core" is missing, does not decode to XML, has no "main" or lacks the path. The
// resource is read and parsed anew on every call.
OVCORE_AUTOTEST_EXPORT QString ReadCoreConfigValue(const QString& path);

// The same lookup over the given hexadecimal text instead of the resource.
OVCORE_AUTOTEST_EXPORT QString ReadCoreConfigValue(const QByteArray& hexText, const QString& path);
