#pragma once

#include "private/OVAutotestExport_p.h"

#include <QByteArray>
#include <QString>
#include <QVector>

// What QSettings would make of the text of an INI file, found out without letting it decode
// anything. QSettings turns a value written as "@Variant(...)" or "@DateTime(...)" back into a
// QVariant through QDataStream, which believes the counts inside it: a few bytes claiming two
// billion list elements end the process. It decodes every value of a section on the first read
// of any key in it, and every value of the file before it writes the file. And it looks for the
// closing bracket of a section line through the rest of the file, so a file of unclosed section
// lines takes minutes to open.
//
// The scan splits the text into lines and unescapes their values exactly as QSettings does, and
// walks each encoded value with bounds checks: every length and count must fit in the bytes
// that follow, nesting is bounded, the value must end where its text ends, and only types whose
// stream layout is known here pass (numbers, strings, byte arrays, lists, maps, dates and times,
// URLs, UUIDs, geometry and colours).
namespace OVSettingsScan {

// A part of the text that QSettings cannot read safely: a key=value line whose value it cannot
// decode safely (replaced by nothing), or a section line without its closing bracket (replaced
// by the line with the bracket added, which names the same section).
struct Damage
{
    int start = 0;
    int length = 0;
    QByteArray replacement;
    QByteArray name; // the key or the section, as written
    bool section = false;
};

// The damaged parts of an INI file's text, in text order.
OVCORE_AUTOTEST_EXPORT QVector<Damage> Find(const QByteArray& text);

// The text with each damaged part replaced.
OVCORE_AUTOTEST_EXPORT QByteArray Repaired(const QByteArray& text, const QVector<Damage>& damages);

// Whether QSettings can turn one unescaped value (an element of a list on its own) into a
// QVariant safely.
OVCORE_AUTOTEST_EXPORT bool IsSafeValue(const QString& value);

} // namespace OVSettingsScan
