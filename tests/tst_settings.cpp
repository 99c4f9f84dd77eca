// The settings store: "app.ini" and "user.ini", their keys, defaults and folders, and what
// happens with files and folders that are not what they should be.

#include "OVApplication.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

namespace {

using A = OVApplication;

QString UserIni()
{
    return A::GetUserDataFolder() + QStringLiteral("/user.ini");
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
        A::SetDataFolder(m_dir->path() + QStringLiteral("/data"));
        A::SetUserDataFolder(m_dir->path() + QStringLiteral("/user"));
    }

    void firstUserWriteCreatesProfile()
    {
        QVERIFY(QDir(A::GetUserDataFolder()).removeRecursively());
        A::SetUserValue(QStringLiteral("Save/PathOpen"), QStringLiteral("/pictures"));
        const QByteArray text = OVTest::ReadFile(UserIni());
        QVERIFY2(text.contains("[General]\nVersion=2.4.0\n"), text.constData());
        QVERIFY2(text.contains("[Save]\nPathOpen=/pictures\n"), text.constData());

        // The version records who created the file; it is not written again.
        QSettings(UserIni(), QSettings::IniFormat).remove(QStringLiteral("Version"));
        A::SetUserValue(QStringLiteral("Save/PathOpen"), QStringLiteral("/other"));
        QCOMPARE(QSettings(UserIni(), QSettings::IniFormat).value(QStringLiteral("Version")), QVariant());
        QCOMPARE(A::GetPathOpen(), QStringLiteral("/other"));

        // An application write makes the user data folder, and no version goes into "app.ini".
        QVERIFY(QDir(A::GetUserDataFolder()).removeRecursively());
        QVERIFY(QDir(A::GetDataFolder()).removeRecursively());
        A::SetAppicationValue(QStringLiteral("Window/Geometry"), 42);
        QVERIFY(QFileInfo(A::GetUserDataFolder()).isDir());
        QCOMPARE(A::GetApplicationValue(QStringLiteral("Version"), 0), QVariant(0));
        QCOMPARE(A::GetUserValue(QStringLiteral("Window/Geometry"), 0), QVariant(0));
    }

    void languageIndexDropsRegion_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("expected");
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
        QTEST(A::GetUserValue(QStringLiteral("Language/Index")).toString(), "expected");
        // Only that one key of "user.ini" is trimmed.
        A::SetUserValue(QStringLiteral("Language/Other"), stored);
        QCOMPARE(A::GetUserValue(QStringLiteral("Language/Other")), stored);
        A::SetAppicationValue(QStringLiteral("Language/Index"), stored);
        QCOMPARE(A::GetApplicationValue(QStringLiteral("Language/Index")).toString(), stored.toString());
    }

    void keyNames_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("key");
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
        A::SetDataFolder(data + QStringLiteral("/../data/"));
        A::SetDataFolder(QDir::toNativeSeparators(data));
        A::SetDataFolder(QString());
        A::SetUserDataFolder(QString());
        QCOMPARE(A::GetDataFolder(), data);
        QVERIFY(!QFileInfo::exists(data));

        // Another folder is created with its parents; nothing is moved.
        A::SetUserValue(QStringLiteral("k"), QStringLiteral("old"));
        const QString nested = m_dir->path() + QStringLiteral("/a/b/c");
        A::SetUserDataFolder(nested);
        QCOMPARE(A::GetUserDataFolder(), nested);
        QVERIFY(QFileInfo(nested).isDir());
        QCOMPARE(A::GetUserValue(QStringLiteral("k"), "none"), QVariant("none"));
    }

    void wrongTypes()
    {
        QSettings raw(UserIni(), QSettings::IniFormat);
        raw.setValue(QStringLiteral("ColorManagement/MissingPolicy"), QStringLiteral("abc"));
        raw.setValue(QStringLiteral("MessagesAndConfirmationsSettings/ShowPNGCompressionSettings"), "false");
        raw.setValue(QStringLiteral("Save/PathOpen"), 5);
        raw.setValue(QStringLiteral("Save/PathExport"), QStringList{"a", "b"});
        raw.sync();
        QCOMPARE(int(A::GetColorManagementMissingPolicy()), 0);
        QCOMPARE(A::IsPNGCompressionVisible(), false);
        QCOMPARE(A::GetPathOpen(), QStringLiteral("5"));
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
        A::SetPathOpen(QStringLiteral("/written"));
        QCOMPARE(A::GetPathOpen(), folder ? QString() : QStringLiteral("/written"));
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

OV_TEST_MAIN(TestSettings)
#include "tst_settings.moc"
