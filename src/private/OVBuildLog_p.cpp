#include "private/OVBuildLog_p.h"

#include <QDebug>

#ifndef OVCORE_SOURCE_ROOT
#define OVCORE_SOURCE_ROOT ""
#endif

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
    qDebug() << Format(date, time, line, file, message);
}

QString OVBuildLog::SourcePath(const char* file)
{
    QString path = QString::fromUtf8(file);
    const QString root = QString::fromUtf8(OVCORE_SOURCE_ROOT);
    if (!root.isEmpty() && path.startsWith(root))
        path.remove(0, root.size());
    return path.replace(QLatin1Char('/'), QLatin1Char('\\'));
}
