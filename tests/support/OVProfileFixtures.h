#pragma once

// ICC profiles made with Little CMS at run time, for the tests, benchmarks and fuzz seeds.

#include <QByteArray>
#include <QString>

namespace OVTest {

// kind: "sRGB", "wide" (RGB of other primaries and gamma), "gray", "lab" or "cmyk" (a CMYK
// device link). A non-empty description replaces the profile's own.
QByteArray MakeProfile(const QString& kind, const QString& description = QString());

// Writes bytes to a new file at path; false when it cannot.
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace OVTest
