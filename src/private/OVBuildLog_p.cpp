#include "private/OVBuildLog_p.h"

#include <QDebug>
#include <QLoggingCategory>

#ifndef OVCORE_SOURCE_ROOT
#define OVCORE_SOURCE_ROOT ""
#endif

namespace {
// Every line goes through one category, so that a host can silence or route the library's
// diagnostics with Qt's logging rules ("ovcore.debug=false"). Kept on purpose: the text is the
// same as on the default category, but a rule for "default" does not reach these lines.
Q_LOGGING_CATEGORY(lcCore, "ovcore")
} // namespace

QString OVBuildLog::Format(const char* date, const char* time, int line, const QString& file,
                           const QString& message)
{
    // Filled one argument after another, left to right, as the line has always been built.
    return QStringLiteral("Build date=%1, time=%2. Line=%3, file=\"%4\". %5")
        .arg(QString::fromLatin1(date))
        .arg(QString::fromLatin1(time))
        .arg(line)
        .arg(file)
        .arg(message);
}

void OVBuildLog::Write(const char* date, const char* time, int line, const QString& file,
                       const QString& message)
{
    qCDebug(lcCore) << Format(date, time, line, file, message);
}

QString OVBuildLog::SourcePath(const char* file)
{
    QString path = QString::fromUtf8(file);
    const QString root = QString::fromUtf8(OVCORE_SOURCE_ROOT);
    if (!root.isEmpty() && path.startsWith(root))
        path.remove(0, root.size());
    // A compiler launcher may hand the compiler a path relative to the build folder
    // ("../../src/x.cpp"); the project-relative path follows the leading steps up.
    while (path.startsWith(QLatin1String("../")) || path.startsWith(QLatin1String("./")))
        path.remove(0, path.indexOf(QLatin1Char('/')) + 1);
    return path.replace(QLatin1Char('/'), QLatin1Char('\\'));
}
