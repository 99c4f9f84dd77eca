#pragma once

#include <QRegularExpression>
#include <QStringList>

namespace OVTest {

// The messages of the build-log lines among lines captured from qDebug(), which quotes them and
// escapes their inner quotes, as the library wrote them.
inline QStringList BuildLogMessages(const QStringList& lines)
{
    static const QRegularExpression line(
        QStringLiteral("^\"Build date=.*\\. Line=\\d+, file=\\\\\"[^\"]*\\\\\"\\. (.*)\"$"));
    QStringList messages;
    for (const QString& text : lines) {
        const QRegularExpressionMatch match = line.match(text);
        if (match.hasMatch())
            messages << match.captured(1).replace(QStringLiteral("\\\""), QStringLiteral("\""));
    }
    return messages;
}

} // namespace OVTest
