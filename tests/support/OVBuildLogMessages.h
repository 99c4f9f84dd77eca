#pragma once

#include <QStringList>

namespace OVTest {

// The messages of the build-log lines among lines captured from qDebug() (which quotes a line
// and escapes its inner quotes), as the library wrote them.
inline QStringList BuildLogMessages(const QStringList& lines)
{
    QStringList messages;
    for (const QString& line : lines)
        if (line.startsWith(QLatin1String("\"Build date=")))
            messages << line.section(QStringLiteral("\\\". "), 1)
                            .chopped(1)
                            .replace(QStringLiteral("\\\""), QStringLiteral("\""));
    return messages;
}

} // namespace OVTest
