// The settings store: "app.ini" and "user.ini", their keys, defaults and folders, and what
// happens with files and folders that are not what they should be.

#include "OVApplication.h"
#include "OVProfileFixtures.h"
#include "OVRecentManager.h"
#include "OVTestSupport.h"

namespace {

using A = OVApplication;

QString UserIni()
{
    return A::GetUserDataFolder() + "/user.ini";
}

const char kReadEverything[] = "--read-everything";
const QString kUserIni = "AppData/Local/Tamsendo/Orvelin/user.ini";
// A red colour, as QSettings writes one.
const QByteArray kKeep = "[Host]\nKeep=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\xff\\xff\\0\\0\\0\\0\\0\\0)\n";

// An INI entry of key (a section, then the key) with the value as written in the file.
QByteArray Entry(const QString& key, const QByteArray& value)
{
    const int slash = key.indexOf('/');
    return "[" + (slash < 0 ? QString("General") : key.left(slash)).toLatin1() + "]\n" +
           key.mid(slash + 1).replace('/', '\\').toLatin1() + "=" + value + "\n";
}

// The child's part: starts up on the files the parent wrote and prints what every getter, the
// recent lists and the plug-in loader give, then writes both settings files.
int ReadEverything(int argc, char** argv)
{
    OVApplication app(argc, argv);
    OVRecentManager::InitInstance();
    OVRecentManager* recent = OVRecentManager::GetInstance();
    A::LoadPlugins();
    QVariantList values;
    values << A::IsStatisticsEnabled() << A::GetApplicationTheme() << A::GetBackground() << A::GetForeground()
           << A::GetMaskBackground() << A::GetMaskForeground() << A::GetTexturePatternIndex()
           << A::GetPathOpen() << A::GetPathExport() << A::GetBatchPathOpen() << A::GetBatchPathInput()
           << A::GetBatchPathOutput() << A::IsPNGCompressionVisible() << A::IsJPGCompressionVisible()
           << A::IsTIFCompressionVisible() << A::WarnAboutLayerInfo() << A::GetColorManagementMissingPolicy()
           << A::GetColorManagementEqualPolicy() << A::GetColorManagementNotEqualPolicy()
           << A::GetColorManagementColorSpaceMismatchPolicy() << A::GetUserValue(A::LanguageIndex, "none")
           << A::GetDefaultLanguage() << A::GetApplicationValue("Window/Geometry", "none")
           << recent->GetRecentsNumber() << recent->GetRecents() << recent->GetFavoritesNumber()
           << recent->GetFavorites() << A::PluginFileName(A::Tools) << int(A::GetErrorPlugins().size())
           << A::GetUserValue("Host/Keep");
    for (const QVariant& value : values)
        printf("%s\n", qPrintable(value.type() == QVariant::StringList ? value.toStringList().join(',')
                                                                       : value.toString()));
    OVRecentManager::ReleaseInstance();
    A::SetAppicationValue("Window/Geometry", 1);
    return 0;
}

// Runs a child on a fresh profile holding the given files (paths below the profile, or below
// the installation's resource folder for "Resources/..."). Its output, or "crashed", and its log.
QPair<QByteArray, QByteArray> RunChild(const QMap<QString, QByteArray>& files)
{
    QTemporaryDir profile;
    QMap<QString, QByteArray> installed;
    for (auto file = files.begin(); file != files.end(); ++file) {
        const bool install = file.key().startsWith("Resources/");
        const QString path =
            install ? A::GetResourcePath() + file.key().mid(9) : profile.filePath(file.key());
        if (install)
            installed.insert(path, file.value());
        QDir().mkpath(QFileInfo(path).path());
        OVTest::WriteFile(path, file.value());
    }
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("HOME", profile.path());
    env.insert("APPDATA", profile.path() + "/AppData/Local");
    QProcess child;
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(), {kReadEverything});
    const bool ran =
        child.waitForFinished(300000) && child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0;
    QByteArray output = ran ? child.readAllStandardOutput() : QByteArray("crashed");
    // The installation's files are read, never written.
    for (auto file = installed.begin(); file != installed.end(); ++file) {
        if (OVTest::ReadFile(file.key()) != file.value())
            output += "\ninstallation file written";
        QFile::remove(file.key());
    }
    return {output, child.readAllStandardError()};
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        // Each test function works on folders of its own.
        m_dir = std::make_unique<QTemporaryDir>();
        A::SetDataFolder(m_dir->path() + "/data");
        A::SetUserDataFolder(m_dir->path() + "/user");
    }

    void firstUserWriteCreatesProfile()
    {
        QVERIFY(QDir(A::GetUserDataFolder()).removeRecursively());
        A::SetUserValue("Save/PathOpen", "/pictures");
        const QByteArray text = OVTest::ReadFile(UserIni());
        QVERIFY2(text.contains("[General]\nVersion=2.4.0\n"), text.constData());
        QVERIFY2(text.contains("[Save]\nPathOpen=/pictures\n"), text.constData());
        // The version records who created the file; it is not written again.
        QSettings(UserIni(), QSettings::IniFormat).remove("Version");
        A::SetUserValue("Save/PathOpen", "/other");
        QCOMPARE(QSettings(UserIni(), QSettings::IniFormat).value("Version"), QVariant());
        QCOMPARE(A::GetPathOpen(), "/other");
        // An application write makes the user data folder, and no version goes into "app.ini".
        QVERIFY(QDir(A::GetUserDataFolder()).removeRecursively());
        QVERIFY(QDir(A::GetDataFolder()).removeRecursively());
        A::SetAppicationValue("Window/Geometry", 42);
        QVERIFY(QFileInfo(A::GetUserDataFolder()).isDir());
        QCOMPARE(A::GetApplicationValue("Version", 0), QVariant(0));
        QCOMPARE(A::GetUserValue("Window/Geometry", 0), QVariant(0));
    }

    void languageIndexDropsRegion_data()
    {
        OVTest::Columns<QVariant, QString>({"stored", "expected"});
        QTest::newRow("language and region") << QVariant("pt_BR") << "pt";
        QTest::newRow("leading underscore") << QVariant("_x") << "";
        QTest::newRow("hyphen is kept") << QVariant("pt-BR") << "pt-BR";
    }
    void languageIndexDropsRegion()
    {
        QFETCH(QVariant, stored);
        // With nothing stored the default comes back as it is: not cut, not converted.
        QCOMPARE(A::GetUserValue(A::LanguageIndex, stored), stored);
        QVERIFY(!A::GetUserValue(A::LanguageIndex).isValid());
        A::SetUserValue(A::LanguageIndex, stored);
        QTEST(A::GetUserValue("Language/Index").toString(), "expected");
        // Only that one key of "user.ini" is trimmed.
        A::SetUserValue("Language/Other", stored);
        QCOMPARE(A::GetUserValue("Language/Other"), stored);
        A::SetAppicationValue("Language/Index", stored);
        QCOMPARE(A::GetApplicationValue("Language/Index").toString(), stored.toString());
    }

    void keyNames_data()
    {
        OVTest::Columns<int, QString>({"role", "key"});
        const QStringList keys =
            QStringList{QString()} +
            OVTest::Words(
                "Version Language/Index Theme/Path ColorManagement/WorkingProfileID "
                "ColorManagement/MissingPolicy "
                "ColorManagement/EqualPolicy ColorManagement/NotEqualPolicy "
                "ColorManagement/ColorSpaceMismatchPolicy "
                "MessagesAndConfirmationsSettings/ShowPNGCompressionSettings "
                "MessagesAndConfirmationsSettings/ShowJPGCompressionSettings "
                "MessagesAndConfirmationsSettings/ShowTIFFCompressionSettings Save/PathOpen Save/PathExport "
                "SaveAs/Suffix Batch/Path/Open Batch/Path/Input Batch/Path/Output Colors/Background "
                "Colors/Foreground Colors/Mask/Background Colors/Mask/Foreground StartupWindow/Show "
                "Miscellaneous/CheckForUpdate Update/Remind Update/RemindDate TexturePatternIndex "
                "ApplicationTemporaryPath");
        for (int role = -1; role <= 28; ++role)
            QTest::addRow("%d", role) << role << keys.value(role);
    }
    void keyNames()
    {
        QFETCH(int, role);
        QFETCH(QString, key);
        QCOMPARE(A::GetName(A::UseDataRole(role)), key);
        if (role == A::Version || role == A::LanguageIndex)
            return;
        // The role-based accessors are the key-based ones under that key; roles without a key
        // read the default and write nothing.
        A::SetUserValue(A::UseDataRole(role), QStringLiteral("v%1").arg(role));
        QCOMPARE(A::GetUserValue(A::UseDataRole(role), "def"),
                 QVariant(key.isEmpty() ? "def" : "v" + QString::number(role)));
        QCOMPARE(QSettings(UserIni(), QSettings::IniFormat).allKeys().size(), key.isEmpty() ? 1 : 2);
    }

    void folderSetters()
    {
        const QString data = A::GetDataFolder();
        // The current folder, however spelled, changes nothing and creates nothing; neither does
        // an empty one.
        QVERIFY(QDir(data).removeRecursively());
        A::SetDataFolder(data + "/../data/");
        A::SetDataFolder(QDir::toNativeSeparators(data));
        A::SetDataFolder(QString());
        A::SetUserDataFolder(QString());
        QCOMPARE(A::GetDataFolder(), data);
        QVERIFY(!QFileInfo::exists(data));
        // Another folder is created with its parents; nothing is moved.
        A::SetUserValue("k", "old");
        const QString nested = m_dir->path() + "/a/b/c";
        A::SetUserDataFolder(nested);
        QCOMPARE(A::GetUserDataFolder(), nested);
        QVERIFY(QFileInfo(nested).isDir());
        QCOMPARE(A::GetUserValue("k", "none"), QVariant("none"));
    }

    void wrongTypes()
    {
        QSettings raw(UserIni(), QSettings::IniFormat);
        raw.setValue("ColorManagement/MissingPolicy", "abc");
        raw.setValue("MessagesAndConfirmationsSettings/ShowPNGCompressionSettings", "false");
        raw.setValue("Save/PathOpen", 5);
        raw.setValue("Save/PathExport", QStringList{"a", "b"});
        raw.sync();
        QCOMPARE(int(A::GetColorManagementMissingPolicy()), 0);
        QCOMPARE(A::IsPNGCompressionVisible(), false);
        QCOMPARE(A::GetPathOpen(), "5");
        QCOMPARE(A::GetPathExport(), QString());
    }

    void badFiles_data()
    {
        QTest::addColumn<bool>("folder");
        QTest::newRow("garbage file") << false;
        QTest::newRow("user.ini is a folder") << true;
    }
    void badFiles()
    {
        QFETCH(bool, folder);
        QByteArray junk("[[[\x01\x02\xff\xfe=\n=\n[General\nVersion\n\0\0\0", 32);
        for (int i = 0; i < 4096; ++i)
            junk.append(char((i * 7919) % 256));
        QVERIFY(folder ? QDir().mkpath(UserIni()) : OVTest::WriteFile(UserIni(), junk));
        QCOMPARE(A::GetPathOpen(), QString());
        QCOMPARE(int(A::GetColorManagementNotEqualPolicy()), 3);
        A::SetPathOpen("/written");
        QCOMPARE(A::GetPathOpen(), folder ? QString() : "/written");
    }

    // A value QSettings cannot decode safely, in each of the library's files, under keys read at
    // start-up, by getters and by the recent lists, and in each form: start-up, every getter, the
    // recent lists and the plug-in loader give the defaults, the other values stay, and a build-log
    // line tells what was dropped.
    void damagedValue_data()
    {
        OVTest::Columns<QString, QByteArray>({"file", "text"});
        const QByteArray list = "@Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)"; // 2^31 - 1 values
        const QString folder = QFileInfo(kUserIni).path() + '/';
        for (const QString& key : OVTest::Words(
                 "Statistics/Enabled Colors/Mask/Foreground Language/Index RecentFiles FavoriteLimit"))
            QTest::addRow("user.ini %s", qPrintable(key)) << kUserIni << Entry(key, list);
        QTest::newRow("app.ini") << folder + "app.ini" << Entry("Window/Geometry", list);
        QTest::newRow("plugins.ini general") << "Resources/plugins.ini" << Entry("general", list);
        QTest::newRow("plugins.ini brush") << "Resources/plugins.ini" << Entry("brush", list);
        QTest::newRow("installsettings.ini")
            << "Resources/settings/installsettings.ini" << Entry("Language/Index", list);
        const auto form = [](const char* name, const QByteArray& value) {
            QTest::newRow(name) << kUserIni << Entry("Colors/Background", value);
        };
        form("string list", "@Variant(\\0\\0\\0\\v\\x7f\\xff\\xff\\xff)");
        form("escaped @", "\\x40" + list.mid(1));
        form("in a list", "a, " + list);
        form("quoted over two lines", "\"\\\n" + list + "\"");
        form("date time holding a list", "@DateTime(\\0\\0\\0\\t\\0\\x7f\\xff\\xff\\xff)");
        form("nested 100000 deep",
             "@Variant(" + QByteArray("\\0\\0\\0\\t\\0\\0\\0\\x1").repeated(100000) + ")");
        form("colour of an unknown model", "@Variant(\\0\\0\\0\\x43\\x9\\0\\0\\0\\0\\0\\0\\0\\0\\0\\0)");
        QTest::newRow("byte order mark") << folder + "app.ini"
                                         << "\xef\xbb\xbf" + Entry("Window/Geometry", list);
        QTest::newRow("unclosed sections") << kUserIni << QByteArray("[Other\nx=1\n[\n");
    }
    void damagedValue()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        static const QByteArray clean = RunChild({{kUserIni, kKeep}}).first;
        QVERIFY2(clean.endsWith("\n#ff0000\n"), clean);
        QMap<QString, QByteArray> files{{kUserIni, kKeep}};
        files[file] += text;
        const auto [output, log] = RunChild(files);
        QCOMPARE(output, clean);
        QVERIFY2(log.contains("Damaged settings value") || log.contains("Unclosed settings section"), log);
    }

    // What the library and a host write reads back unchanged, colours first.
    void roundTrip_data()
    {
        QTest::addColumn<QVariant>("value");
        QByteArray bytes;
        for (int i = 0; i < 256; ++i)
            bytes += char(i);
        QTest::newRow("colour") << QVariant(QColor(1, 2, 3, 4));
        QTest::newRow("colour models")
            << QVariant(QVariantList{QColor::fromHsvF(0.5, 0.25, 0.75, 0.5), QColor::fromCmyk(1, 2, 3, 4, 5),
                                     QColor::fromRgbF(1.5, -0.25, 0.5), QColor()});
        QTest::newRow("bytes") << QVariant(bytes);
        QTest::newRow("strings") << QVariant(QStringList{"a,b", "@c", "", "\"d\\"});
        QTest::newRow("numbers") << QVariant(
            QVariantList{true, -7, 7u, qint64(1) << 62, 2.5, QVariant::fromValue(1.5f),
                         QVariant::fromValue<short>(-3), QVariant::fromValue('c')});
        QTest::newRow("nested") << QVariant(QVariantList{QVariantMap{{"k", QVariantList{bytes, QVariant()}}},
                                                         QVariantHash{{"h", QStringList{"x"}}}});
        QTest::newRow("times") << QVariant(QVariantList{
            QDate(2024, 2, 29), QTime(23, 59, 59, 999), QDateTime(QDate(1, 1, 1), QTime(1, 2), Qt::UTC),
            QDateTime(QDate(2024, 2, 29), QTime(12, 0), Qt::OffsetFromUTC, 3600),
            QDateTime(QDate(2024, 2, 29), QTime(12, 0), QTimeZone("Europe/Berlin"))});
        QTest::newRow("geometry") << QVariant(QVariantList{QSizeF(1, 2), QPointF(3, 4), QRectF(1, 2, 3, 4),
                                                           QLineF(1, 2, 3, 4), QLine(1, 2, 3, 4)});
        QTest::newRow("url and uuid")
            << QVariant(QVariantList{QUrl("https://example.org/a b?c#d"), QUuid::createUuid()});
    }
    void roundTrip()
    {
        QFETCH(QVariant, value);
        OVTest::LogCapture log;
        A::SetUserValue("Host/Value", value);
        // A write decodes the whole file again.
        A::SetUserValue("Host/Other", 1);
        QCOMPARE(A::GetUserValue("Host/Value"), value);
        QCOMPARE(log.Matching("Damaged"), QStringList());
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], kReadEverything) == 0)
        return ReadEverything(argc, argv);
    return OVTest::Main<TestSettings>(argc, argv);
}
#include "tst_settings.moc"
