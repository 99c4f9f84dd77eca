// The settings store: "app.ini" and "user.ini", their keys, defaults and folders, and what
// happens with files and folders that are not what they should be.

#include "OVApplication.h"
#include "OVTestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

#include <functional>

#include <unistd.h>

namespace {

QString UserIni()
{
    return OVApplication::GetUserDataFolder() + QStringLiteral("/user.ini");
}

QString AppIni()
{
    return OVApplication::GetDataFolder() + QStringLiteral("/app.ini");
}

QVariant RawValue(const QString& ini, const QString& key)
{
    return QSettings(ini, QSettings::IniFormat).value(key);
}

void WriteRaw(const QString& ini, const QString& key, const QVariant& value)
{
    QSettings(ini, QSettings::IniFormat).setValue(key, value);
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// One typed accessor pair of the store, with the key it keeps its value under.
struct Accessor
{
    const char* name;
    QString key;
    std::function<QVariant()> get;
    std::function<void(const QVariant&)> set;
    QVariant def;
    QVariant value;
};

template <typename T>
Accessor MakeAccessor(const char* name, const QString& key, T (*get)(), void (*set)(T), T def, T value)
{
    return {name,
            key,
            [get] { return QVariant::fromValue(get()); },
            [set](const QVariant& v) { set(v.value<T>()); },
            QVariant::fromValue(def),
            QVariant::fromValue(value)};
}

template <typename E>
Accessor MakePolicy(const char* name, const QString& key, E (*get)(), void (*set)(E), int def, int value)
{
    return {name,
            key,
            [get] { return QVariant(int(get())); },
            [set](const QVariant& v) { set(E(v.toInt())); },
            QVariant(def),
            QVariant(value)};
}

Accessor MakePath(const char* name, const QString& key, QString (*get)(), void (*set)(const QString&))
{
    return {name,
            key,
            [get] { return QVariant(get()); },
            [set](const QVariant& v) { set(v.toString()); },
            QVariant(QString()),
            QVariant(QStringLiteral("C:/Pictures/") + QLatin1String(name))};
}

const std::vector<Accessor>& Accessors()
{
    using A = OVApplication;
    static const std::vector<Accessor> accessors = {
        MakePath("PathOpen", QStringLiteral("Save/PathOpen"), &A::GetPathOpen, &A::SetPathOpen),
        MakePath("PathExport", QStringLiteral("Save/PathExport"), &A::GetPathExport, &A::SetPathExport),
        MakePath("BatchPathOpen", QStringLiteral("Batch/Path/Open"), &A::GetBatchPathOpen,
                 &A::SetBatchPathOpen),
        MakePath("BatchPathInput", QStringLiteral("Batch/Path/Input"), &A::GetBatchPathInput,
                 &A::SetBatchPathInput),
        MakePath("BatchPathOutput", QStringLiteral("Batch/Path/Output"), &A::GetBatchPathOutput,
                 &A::SetBatchPathOutput),
        MakeAccessor<bool>("PNGCompressionVisible",
                           QStringLiteral("MessagesAndConfirmationsSettings/ShowPNGCompressionSettings"),
                           &A::IsPNGCompressionVisible, &A::SetPNGCompressionVisible, true, false),
        MakeAccessor<bool>("JPGCompressionVisible",
                           QStringLiteral("MessagesAndConfirmationsSettings/ShowJPGCompressionSettings"),
                           &A::IsJPGCompressionVisible, &A::SetJPGCompressionVisible, true, false),
        MakeAccessor<bool>("TIFCompressionVisible",
                           QStringLiteral("MessagesAndConfirmationsSettings/ShowTIFFCompressionSettings"),
                           &A::IsTIFCompressionVisible, &A::SetTIFCompressionVisible, true, false),
        MakeAccessor<bool>("WarnAboutLayerInfo", QStringLiteral("DocumentIO/IncompleteInfoState"),
                           &A::WarnAboutLayerInfo, &A::SetWarnAboutLayerInfo, true, false),
        MakePolicy("MissingPolicy", QStringLiteral("ColorManagement/MissingPolicy"),
                   &A::GetColorManagementMissingPolicy, &A::SetColorManagementMissingPolicy, 1, 2),
        MakePolicy("EqualPolicy", QStringLiteral("ColorManagement/EqualPolicy"),
                   &A::GetColorManagementEqualPolicy, &A::SetColorManagementEqualPolicy, 1, 0),
        MakePolicy("NotEqualPolicy", QStringLiteral("ColorManagement/NotEqualPolicy"),
                   &A::GetColorManagementNotEqualPolicy, &A::SetColorManagementNotEqualPolicy, 3, 4),
        MakePolicy("ColorSpaceMismatchPolicy", QStringLiteral("ColorManagement/ColorSpaceMismatchPolicy"),
                   &A::GetColorManagementColorSpaceMismatchPolicy,
                   &A::SetColorManagementColorSpaceMismatchPolicy, 0, 2),
    };
    return accessors;
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void firstUserWriteCreatesProfile();
    void applicationWriteCreatesUserDataFolder();
    void typedAccessors_data();
    void typedAccessors();
    void languageIndexDropsRegion_data();
    void languageIndexDropsRegion();
    void keyNames_data();
    void keyNames();
    void unknownRolesUseTheEmptyKey();
    void folderSetters();
    void wrongTypes();
    void badFiles_data();
    void badFiles();
    void valuesAreSharedWithOtherProcesses();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestSettings::firstUserWriteCreatesProfile()
{
    const QString folder = OVApplication::GetUserDataFolder();
    QVERIFY(QDir(folder).removeRecursively());

    OVApplication::SetUserValue(QStringLiteral("Save/PathOpen"), QStringLiteral("/pictures"));

    QVERIFY(QFileInfo(UserIni()).isFile());
    const QByteArray text = ReadFile(UserIni());
    QVERIFY2(text.contains("[General]\nVersion=2.4.0\n"), text.constData());
    QVERIFY2(text.contains("[Save]\nPathOpen=/pictures\n"), text.constData());
    QCOMPARE(OVApplication::GetUserValue(OVApplication::Version), QVariant(QStringLiteral("2.4.0")));

    // The version records who created the file; it is not written again.
    QSettings(UserIni(), QSettings::IniFormat).remove(QStringLiteral("Version"));
    OVApplication::SetUserValue(QStringLiteral("Save/PathOpen"), QStringLiteral("/other"));
    QCOMPARE(RawValue(UserIni(), QStringLiteral("Version")), QVariant());
    QCOMPARE(OVApplication::GetPathOpen(), QStringLiteral("/other"));
}

void TestSettings::applicationWriteCreatesUserDataFolder()
{
    const QString dataFolder = OVApplication::GetDataFolder();
    const QString userFolder = OVApplication::GetUserDataFolder();
    QVERIFY(QDir(dataFolder).removeRecursively());
    QVERIFY(QDir(userFolder).removeRecursively());

    OVApplication::SetAppicationValue(QStringLiteral("Window/Geometry"), 42);

    // It is the user data folder that the first application write makes, and no version
    // key goes into "app.ini".
    QVERIFY(QFileInfo(userFolder).isDir());
    QVERIFY(!QFileInfo::exists(userFolder + QStringLiteral("/user.ini")));
    QCOMPARE(OVApplication::GetApplicationValue(QStringLiteral("Version"), QStringLiteral("none")),
             QVariant(QStringLiteral("none")));
    QCOMPARE(OVApplication::GetUserValue(QStringLiteral("Window/Geometry"), 0), QVariant(0));
    QCOMPARE(OVApplication::GetApplicationValue(QStringLiteral("Window/Geometry"), 0).toInt(),
             QFileInfo::exists(AppIni()) ? 42 : 0);
}

void TestSettings::init()
{
    // Each test function works on folders of its own.
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    OVApplication::SetDataFolder(m_dir->path() + QStringLiteral("/data"));
    OVApplication::SetUserDataFolder(m_dir->path() + QStringLiteral("/user"));
}

void TestSettings::typedAccessors_data()
{
    QTest::addColumn<int>("index");
    for (size_t i = 0; i < Accessors().size(); ++i)
        QTest::newRow(Accessors()[i].name) << int(i);
}

void TestSettings::typedAccessors()
{
    QFETCH(int, index);
    const Accessor& accessor = Accessors()[size_t(index)];

    QCOMPARE(accessor.get(), accessor.def);
    accessor.set(accessor.value);
    QCOMPARE(accessor.get(), accessor.value);
    QCOMPARE(RawValue(UserIni(), accessor.key).toString(), accessor.value.toString());
    QCOMPARE(RawValue(UserIni(), QStringLiteral("Version")), QVariant(QStringLiteral("2.4.0")));
    QVERIFY(!QFileInfo::exists(AppIni()));

    // Writes are unconditional: writing the default stores it.
    accessor.set(accessor.def);
    QCOMPARE(accessor.get(), accessor.def);
    QVERIFY(QSettings(UserIni(), QSettings::IniFormat).contains(accessor.key));
}

void TestSettings::languageIndexDropsRegion_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("expected");
    QTest::newRow("language and region") << QVariant(QStringLiteral("pt_BR")) << QStringLiteral("pt");
    QTest::newRow("language only") << QVariant(QStringLiteral("en")) << QStringLiteral("en");
    QTest::newRow("script and region") << QVariant(QStringLiteral("zh_Hant_TW")) << QStringLiteral("zh");
    QTest::newRow("leading underscore") << QVariant(QStringLiteral("_x")) << QString();
    QTest::newRow("hyphen is kept") << QVariant(QStringLiteral("pt-BR")) << QStringLiteral("pt-BR");
    QTest::newRow("number") << QVariant(12) << QStringLiteral("12");
}

void TestSettings::languageIndexDropsRegion()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, expected);

    OVApplication::SetUserValue(OVApplication::LanguageIndex, stored);
    QCOMPARE(OVApplication::GetUserValue(OVApplication::LanguageIndex).toString(), expected);
    QCOMPARE(OVApplication::GetUserValue(QStringLiteral("Language/Index")).toString(), expected);
    // Only that one key of "user.ini" is trimmed.
    OVApplication::SetUserValue(QStringLiteral("Language/Other"), stored);
    QCOMPARE(OVApplication::GetUserValue(QStringLiteral("Language/Other")), stored);
    OVApplication::SetAppicationValue(QStringLiteral("Language/Index"), stored);
    QCOMPARE(OVApplication::GetApplicationValue(QStringLiteral("Language/Index")).toString(),
             stored.toString());
}

void TestSettings::keyNames_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("key");
    const char* keys[] = {"",
                          "Version",
                          "Language/Index",
                          "Theme/Path",
                          "ColorManagement/WorkingProfileID",
                          "ColorManagement/MissingPolicy",
                          "ColorManagement/EqualPolicy",
                          "ColorManagement/NotEqualPolicy",
                          "ColorManagement/ColorSpaceMismatchPolicy",
                          "MessagesAndConfirmationsSettings/ShowPNGCompressionSettings",
                          "MessagesAndConfirmationsSettings/ShowJPGCompressionSettings",
                          "MessagesAndConfirmationsSettings/ShowTIFFCompressionSettings",
                          "Save/PathOpen",
                          "Save/PathExport",
                          "SaveAs/Suffix",
                          "Batch/Path/Open",
                          "Batch/Path/Input",
                          "Batch/Path/Output",
                          "Colors/Background",
                          "Colors/Foreground",
                          "Colors/Mask/Background",
                          "Colors/Mask/Foreground",
                          "StartupWindow/Show",
                          "Miscellaneous/CheckForUpdate",
                          "Update/Remind",
                          "Update/RemindDate",
                          "TexturePatternIndex",
                          "ApplicationTemporaryPath",
                          ""};
    for (int role = 0; role <= 28; ++role)
        QTest::addRow("%d", role) << role << QString::fromLatin1(keys[role]);
    QTest::newRow("-1") << -1 << QString();
}

void TestSettings::keyNames()
{
    QFETCH(int, role);
    QFETCH(QString, key);
    QCOMPARE(OVApplication::GetName(OVApplication::UseDataRole(role)), key);
    if (key.isEmpty() || role == OVApplication::Version || role == OVApplication::LanguageIndex)
        return;
    // The role-based accessors are the key-based ones under that key.
    OVApplication::SetUserValue(OVApplication::UseDataRole(role), QStringLiteral("v%1").arg(role));
    QCOMPARE(OVApplication::GetUserValue(key), QVariant(QStringLiteral("v%1").arg(role)));
}

void TestSettings::unknownRolesUseTheEmptyKey()
{
    OVApplication::SetUserValue(QStringLiteral("x"), 1);
    for (int role : {0, 28}) {
        QCOMPARE(OVApplication::GetUserValue(OVApplication::UseDataRole(role), QStringLiteral("def")),
                 QVariant(QStringLiteral("def")));
        OVApplication::SetUserValue(OVApplication::UseDataRole(role), QStringLiteral("lost"));
    }
    QCOMPARE(QSettings(UserIni(), QSettings::IniFormat).allKeys(),
             (QStringList{QStringLiteral("Version"), QStringLiteral("x")}));
}

void TestSettings::folderSetters()
{
    const QString data = OVApplication::GetDataFolder();
    const QString user = OVApplication::GetUserDataFolder();
    QVERIFY(QFileInfo(data).isDir());

    // The current folder, however spelled, changes nothing and creates nothing.
    QVERIFY(QDir(data).removeRecursively());
    OVApplication::SetDataFolder(data + QStringLiteral("/"));
    OVApplication::SetDataFolder(QDir::toNativeSeparators(data));
    OVApplication::SetDataFolder(data + QStringLiteral("/../data"));
    QCOMPARE(OVApplication::GetDataFolder(), data);
    QVERIFY(!QFileInfo::exists(data));
    OVApplication::SetDataFolder(QString());
    QCOMPARE(OVApplication::GetDataFolder(), data);

    // Another folder is created with its parents; nothing is moved.
    OVApplication::SetUserValue(QStringLiteral("k"), QStringLiteral("old"));
    const QString nested = m_dir->path() + QStringLiteral("/a/b/c");
    OVApplication::SetUserDataFolder(nested);
    QCOMPARE(OVApplication::GetUserDataFolder(), nested);
    QVERIFY(QFileInfo(nested).isDir());
    QCOMPARE(OVApplication::GetUserValue(QStringLiteral("k"), QStringLiteral("none")),
             QVariant(QStringLiteral("none")));
    QVERIFY(QFileInfo::exists(user + QStringLiteral("/user.ini")));

    OVApplication::SetDataFolder(m_dir->path() + QStringLiteral("/d/e"));
    OVApplication::SetAppicationValue(QStringLiteral("k"), 7);
    QVERIFY(QFileInfo::exists(m_dir->path() + QStringLiteral("/d/e/app.ini")));
    QCOMPARE(OVApplication::GetApplicationValue(QStringLiteral("k")), QVariant(QStringLiteral("7")));
}

void TestSettings::wrongTypes()
{
    WriteRaw(UserIni(), QStringLiteral("ColorManagement/MissingPolicy"), QStringLiteral("abc"));
    WriteRaw(UserIni(), QStringLiteral("ColorManagement/EqualPolicy"), 1000);
    WriteRaw(UserIni(), QStringLiteral("MessagesAndConfirmationsSettings/ShowPNGCompressionSettings"),
             QStringLiteral("false"));
    WriteRaw(UserIni(), QStringLiteral("MessagesAndConfirmationsSettings/ShowJPGCompressionSettings"), 0);
    WriteRaw(UserIni(), QStringLiteral("Save/PathOpen"), 5);
    WriteRaw(UserIni(), QStringLiteral("Save/PathExport"),
             QStringList{QStringLiteral("a"), QStringLiteral("b")});

    QCOMPARE(int(OVApplication::GetColorManagementMissingPolicy()), 0);
    QCOMPARE(int(OVApplication::GetColorManagementEqualPolicy()), 1000);
    QCOMPARE(OVApplication::IsPNGCompressionVisible(), false);
    QCOMPARE(OVApplication::IsJPGCompressionVisible(), false);
    QCOMPARE(OVApplication::GetPathOpen(), QStringLiteral("5"));
    QCOMPARE(OVApplication::GetPathExport(), QString());
}

void TestSettings::badFiles_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("writesVanish");
    QTest::newRow("garbage file") << QStringLiteral("garbage") << false;
    QTest::newRow("user.ini is a folder") << QStringLiteral("folder") << true;
    QTest::newRow("folder below a file") << QStringLiteral("below-file") << true;
    QTest::newRow("unreadable folder") << QStringLiteral("unreadable") << true;
}

void TestSettings::badFiles()
{
    QFETCH(QString, kind);
    QFETCH(bool, writesVanish);

    const QString root = m_dir->path();
    if (kind == QLatin1String("garbage")) {
        QFile file(UserIni());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QByteArray junk("[[[\x01\x02\xff\xfe=\n=\n[General\nVersion\n\0\0\0", 32);
        for (int i = 0; i < 4096; ++i)
            junk.append(char((i * 7919) % 256));
        file.write(junk);
    } else if (kind == QLatin1String("folder")) {
        QVERIFY(QDir().mkpath(UserIni()));
    } else if (kind == QLatin1String("below-file")) {
        QFile file(root + QStringLiteral("/plain"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        OVApplication::SetUserDataFolder(root + QStringLiteral("/plain/profile"));
        OVApplication::SetDataFolder(root + QStringLiteral("/plain/data"));
    } else {
        if (geteuid() == 0)
            QSKIP("File permissions do not bind the super-user");
        WriteRaw(UserIni(), QStringLiteral("Save/PathOpen"), QStringLiteral("/kept"));
        QVERIFY(QFile::setPermissions(OVApplication::GetUserDataFolder(), QFileDevice::Permissions()));
    }

    QCOMPARE(OVApplication::GetPathOpen(), QString());
    QCOMPARE(OVApplication::IsPNGCompressionVisible(), true);
    QCOMPARE(int(OVApplication::GetColorManagementNotEqualPolicy()), 3);
    QCOMPARE(OVApplication::GetUserValue(OVApplication::LanguageIndex, QStringLiteral("en")).toString(),
             QStringLiteral("en"));

    OVApplication::SetPathOpen(QStringLiteral("/written"));
    OVApplication::SetUserValue(OVApplication::ThemePath, QStringLiteral(":/Light"));
    OVApplication::SetAppicationValue(QStringLiteral("k"), 1);
    if (writesVanish) {
        QCOMPARE(OVApplication::GetPathOpen(), QString());
        QCOMPARE(OVApplication::GetUserValue(OVApplication::ThemePath, QStringLiteral(":/Dark")).toString(),
                 QStringLiteral(":/Dark"));
    } else {
        QCOMPARE(OVApplication::GetPathOpen(), QStringLiteral("/written"));
    }
    QFile::setPermissions(OVApplication::GetUserDataFolder(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

void TestSettings::valuesAreSharedWithOtherProcesses()
{
    OVApplication::SetUserValue(QStringLiteral("Shared/Key"), QStringLiteral("mine"));
    // Another process of the editor writes the same file; nothing here is cached.
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--child-write"), OVApplication::GetUserDataFolder(),
                 QStringLiteral("Shared/Key"), QStringLiteral("theirs")});
    QVERIFY(child.waitForFinished(60000));
    QCOMPARE(child.exitCode(), 0);
    QCOMPARE(OVApplication::GetUserValue(QStringLiteral("Shared/Key")), QVariant(QStringLiteral("theirs")));
}

int main(int argc, char** argv)
{
    if (argc == 5 && qstrcmp(argv[1], "--child-write") == 0) {
        // Runs as the other process of valuesAreSharedWithOtherProcesses(), in the profile
        // its parent made.
        int childArgc = 1;
        OVApplication app(childArgc, argv);
        OVApplication::SetUserDataFolder(QString::fromLocal8Bit(argv[2]));
        OVApplication::SetUserValue(QString::fromLocal8Bit(argv[3]), QString::fromLocal8Bit(argv[4]));
        return 0;
    }
    OVTest::IsolateEnvironment();
    OVApplication app(argc, argv);
    TestSettings test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_settings.moc"
