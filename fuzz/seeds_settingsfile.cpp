// Writes the seeds of fuzz_settingsfile into the folder given as the first argument: settings
// files as the library and a host write them through the library's settings path, and the
// damaged forms such a file can take.

#include "private/OVSettingsFile_p.h"

#include <QColor>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLineF>
#include <QRectF>
#include <QTimeZone>
#include <QUrl>
#include <QUuid>

namespace {

bool WriteRaw(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const auto set = [&](const char* file, const char* key, const QVariant& value) {
        OVSettingsFile::SetValue(folder.filePath(QLatin1String(file)), QLatin1String(key), value);
    };
    set("user.ini", "Version", QStringLiteral("2.4.0"));
    set("user.ini", "Colors/Background", QColor(12, 34, 56));
    set("user.ini", "Colors/Foreground", QColor::fromHsv(200, 100, 50, 128));
    set("user.ini", "Colors/Mask/Background", QColor::fromRgbF(1.5, -0.25, 0.5));
    set("user.ini", "Theme/Path", QStringLiteral(":/Light"));
    set("user.ini", "Save/PathOpen", QStringLiteral("C:\\Users\\user\\Pictures, 2024"));
    set("user.ini", "ColorManagement/NotEqualPolicy", 2);
    set("user.ini", "MessagesAndConfirmationsSettings/ShowPNGCompressionSettings", false);
    set("user.ini", "RecentLimit", 12);
    set("user.ini", "RecentFiles", QByteArray("\0\0\0\x01\0\0\0\x04\0a\0b", 12));
    set("host.ini", "Lists/Strings", QStringList{QStringLiteral("a,b"), QStringLiteral("@c"), QString()});
    set("host.ini", "Lists/Values",
        QVariantList{1, 2.5, QVariantMap{{QStringLiteral("k"), QColor(Qt::red)}}});
    set("host.ini", "Lists/One", QVariantList{QVariantHash{{QStringLiteral("h"), QByteArray("\xff\0", 2)}}});
    set("host.ini", "Times/Date", QDate(2024, 2, 29));
    set("host.ini", "Times/Zoned", QDateTime(QDate(2024, 2, 29), QTime(12, 0), QTimeZone("Europe/Berlin")));
    set("host.ini", "Times/Offset", QDateTime(QDate(2024, 2, 29), QTime(12, 0), Qt::OffsetFromUTC, 3600));
    set("host.ini", "Other/Geometry", QVariantList{QRectF(1, 2, 3, 4), QSizeF(5, 6), QLineF(1, 2, 3, 4)});
    set("host.ini", "Other/Ids",
        QVariantList{QUrl(QStringLiteral("https://example.org/a b")),
                     QUuid(QStringLiteral("{6f1d2c3b-0a4e-4b5c-9d8e-7f6a5b4c3d2e}"))});
    set("plugins.ini", "brush", QStringLiteral("../Plugins/brushes"));
    set("plugins.ini", "general", QStringLiteral("../Plugins"));
    set("installsettings.ini", "Language/Index", QStringLiteral("pt_BR"));
    const QByteArray list = "@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)";
    bool ok =
        WriteRaw(folder.filePath(QStringLiteral("list-count.ini")), "[Statistics]\nEnabled=" + list + "\n");
    ok = WriteRaw(folder.filePath(QStringLiteral("escaped.ini")),
                  "[General]\nk=a, \"\\x40Variant(\\0\\0\\0\\x43\\x1)\"\n") &&
         ok;
    ok = WriteRaw(folder.filePath(QStringLiteral("date-time.ini")),
                  "k=@DateTime(\\0\\0\\0\\t\\0\\0\\0\\0\\x2)\n") &&
         ok;
    ok = WriteRaw(folder.filePath(QStringLiteral("unclosed.ini")),
                  "\xef\xbb\xbf[a\n[b;c\nk=\\\n" + list + "\n") &&
         ok;
    return ok ? 0 : 1;
}
