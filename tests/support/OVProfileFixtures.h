#pragma once

// ICC profiles made with Little CMS at run time, for the tests, benchmarks and fuzz seeds, and
// the files they and the tests write and read.

#include <QByteArray>
#include <QFile>
#include <QString>

namespace OVTest {

// kind: "sRGB", "wide" (RGB of other primaries and gamma), "gray", "lab" or "cmyk" (a CMYK
// device link). A non-empty description replaces the profile's own.
QByteArray MakeProfile(const QString& kind, const QString& description = QString());

// Writes bytes to a new file at path (replacing any file there); false when it cannot.
inline bool WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The bytes of the file at path; none when it cannot be read.
inline QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace OVTest
