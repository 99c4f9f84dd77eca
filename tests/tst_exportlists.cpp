// The export resolutions and sizes: start-up from the host's defaults or the user's file,
// the parsing rules on real INI files, and every change announced and then saved.

#include "OVApplication.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"
#include "private/KXExportResolutions_p.h"
#include "private/KXExportSizes_p.h"

namespace {

const QString kSizes = "Sizes";

QString UserFile(const QString& group)
{
    return OVApplication::GetUserDataFolder() +
           (group == kSizes ? KXExportSizeTable::FileName() : KXExportResolutionTable::FileName());
}

void Load(const QString& group, const QString& path)
{
    group == kSizes ? KXExportSizesPrivate::LoadInstance(path)
                    : KXExportResolutionsPrivate::LoadInstance(path);
}

// The items of a group in index order, as a file (or the list itself) holds them.
QStringList Stored(const QString& path, const QString& group)
{
    QSettings settings(path, QSettings::IniFormat);
    QStringList items;
    for (int i = 0; settings.contains(group + '/' + QString::number(i)); ++i)
        items << settings.value(group + '/' + QString::number(i)).toString();
    return items;
}

QStringList Items(const QString& group)
{
    QStringList items;
    for (const QSize& item : KXExportResolutions::GetList())
        items << QStringLiteral("%1x%2").arg(item.width()).arg(item.height());
    for (qint64 item : KXExportSizes::GetList())
        items << QString::number(item);
    return group == kSizes ? items.mid(KXExportResolutions::GetSize())
                           : items.mid(0, KXExportResolutions::GetSize());
}

QStringList Defaults(const QString& group)
{
    return Stored(group == kSizes ? KXExportSizeTable::Resource() : KXExportResolutionTable::Resource(),
                  group);
}

} // namespace

class TestExportLists : public QObject
{
    Q_OBJECT
private slots:
    void startUp()
    {
        // No user file at start: the host's defaults, then written to the user's file, whose list
        // is the one loaded from then on.
        for (const QString& group : QStringList{"Resolutions", kSizes}) {
            QCOMPARE(Defaults(group).size(), group == kSizes ? 2 : 3);
            QCOMPARE(Items(group), Defaults(group));
            QCOMPARE(Stored(UserFile(group), group), Defaults(group));
            QCOMPARE(QSettings(UserFile(group), QSettings::IniFormat).value("Version"), QVariant("2.3.0"));
            QVERIFY(OVTest::WriteFile(UserFile(group),
                                      "[General]\nVersion=1\n[Resolutions]\n0=640x480\n[Sizes]\n0=77\n"));
            Load(group, UserFile(group));
            QCOMPARE(Items(group).size(), 1);
        }
    }

    void noDefaults()
    {
        // Without the host's resource a list starts empty, and its file is marked as read.
        Q_CLEANUP_RESOURCE(testexportlists);
        const QString path = OVTest::SandboxPath() + "/nodefaults.ini";
        Load("Resolutions", path);
        QCOMPARE(KXExportResolutions::GetSize(), 0);
        QCOMPARE(QSettings(path, QSettings::IniFormat).allKeys(), QStringList{"Version"});
        Q_INIT_RESOURCE(testexportlists);
    }

    void loading_data()
    {
        // file "<dir>": a folder stands at the file's place; expected "<defaults>": the host's list
        OVTest::Columns<QString, QByteArray, QString>({"group", "file", "expected"});
        const QByteArray version = "[General]\nVersion=2.3.0\n";
        OVTest::Row("resolution rules", "Resolutions",
                    version + "[Resolutions]\n0=0x600\n1=abc\n2=800x600x2\n3="
                              "10001x10\n4=800x600\n5=10000x1\n6=x\n7=-1x5\n",
                    "800x600 10000x1");
        OVTest::Row("indices 0, 1, 3", "Resolutions", version + "[Resolutions]\n0=1x2\n1=3x4\n3=5x6\n",
                    "1x2 3x4");
        OVTest::Row("size rules", "Sizes", version + "[Sizes]\n0=0\n1=-5\n2=abc\n3=1048576\n4=9000000000\n",
                    "1048576 9000000000");
        OVTest::Row("version and no items", "Sizes", version, "");
        OVTest::Row("no version", "Sizes", QByteArray("[Sizes]\n0=5\n"), "<defaults>");
        OVTest::Row("garbage", "Resolutions", QByteArray("\x01\xff[[=\n\0\0=]]", 11), "<defaults>");
        OVTest::Row("folder", "Resolutions", QByteArray("<dir>"), "<defaults>");
        // A stored list whose count says two billion, written plainly and spelled with escapes.
        OVTest::Row("stored variant", "Sizes",
                    version + "[Sizes]\n0=@Variant(\\0\\0\\0\\v\\x7f\\xff\\xff\\xff)\n", "<defaults>");
        OVTest::Row("escaped variant", "Sizes",
                    version + "[Sizes]\n0=\\x40Variant(\\0\\0\\0\\v\\x7f\\xff\\xff\\xff)\n", "<defaults>");
    }
    void loading()
    {
        QFETCH(QString, group);
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        const QString path = OVTest::SandboxPath() + "/loading/" + QTest::currentDataTag() + ".ini";
        QDir().mkpath(file == "<dir>" ? path : QFileInfo(path).path());
        QVERIFY(file == "<dir>" || OVTest::WriteFile(path, file));
        Load(group, path);
        if (expected != "<defaults>") {
            QCOMPARE(Items(group).join(' '), expected);
            return;
        }
        QCOMPARE(Items(group), Defaults(group));
        // Saved to the user's file where it can be written, so used only once.
        if (file != "<dir>")
            QCOMPARE(Stored(path, group), Defaults(group));
    }

    void editing()
    {
        const QString path = OVTest::SandboxPath() + "/editing.ini";
        QVERIFY(
            OVTest::WriteFile(path, "[General]\nVersion=2.3.0\n[Resolutions]\n0=1280x720\n1=3840x2160\n"));
        Load("Resolutions", path);
        OVTest::SignalLog log;
        auto* list = KXExportResolutions::GetInstance();
        log.RecordByName(list, &KXExportResolutions::Inserted, &KXExportResolutions::Changhed,
                         &KXExportResolutions::Removed);
        // Each signal comes before the save: the file still holds the list before the change.
        for (auto signal :
             {&KXExportResolutions::Inserted, &KXExportResolutions::Changhed, &KXExportResolutions::Removed})
            connect(list, signal, &log, [&] { log.Append("file:" + Stored(path, "Resolutions").join(',')); });

        QCOMPARE(KXExportResolutions::Add(QSize(1920, 1080)), 1);
        QCOMPARE(KXExportResolutions::Add(QSize(1920, 1200)), 2);
        KXExportResolutions::Add(-5, QSize(640, 480));
        KXExportResolutions::Add(99, QSize(800, 600));
        // An equal value neither announces nor writes anything: the file keeps its bytes and time.
        QFile file(path);
        const QDateTime old = QDateTime::fromSecsSinceEpoch(946684800);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(old, QFileDevice::FileModificationTime));
        file.close();
        const QByteArray bytes = OVTest::ReadFile(path);
        KXExportResolutions::Set(1, QSize(1280, 720));
        QCOMPARE(QFileInfo(path).lastModified(), old);
        QCOMPARE(OVTest::ReadFile(path), bytes);
        KXExportResolutions::Set(6, QSize(1, 1));
        KXExportResolutions::Set(1, QSize(1280, 800));
        KXExportResolutions::Remove(-1);
        KXExportResolutions::Remove(6);
        KXExportResolutions::Remove(5);
        QCOMPARE(log.Entries(),
                 QStringList({"Inserted(1)", "file:1280x720,3840x2160", "Inserted(2)",
                              "file:1280x720,1920x1080,3840x2160", "Inserted(0)",
                              "file:1280x720,1920x1080,1920x1200,3840x2160", "Inserted(5)",
                              "file:640x480,1280x720,1920x1080,1920x1200,3840x2160", "Changhed(1)",
                              "file:640x480,1280x720,1920x1080,1920x1200,3840x2160,800x600", "Removed(5)",
                              "file:640x480,1280x800,1920x1080,1920x1200,3840x2160,800x600"}));
        // The removed item's key is gone; the save removes keys from the new count up to the number
        // of keys held before (five items and key 9), so a key behind a gap stays.
        QSettings(path, QSettings::IniFormat).setValue("Resolutions/9", "2x2");
        KXExportResolutions::Remove(0);
        QSettings settings(path, QSettings::IniFormat);
        settings.beginGroup("Resolutions");
        QCOMPARE(settings.childKeys(), QStringList({"0", "1", "2", "3", "9"}));
        QCOMPARE(KXExportSizes::Add(1), 0);
        QCOMPARE(KXExportSizes::Add(KXExportSizes::Get(0)), 1);
    }

    void get()
    {
        const auto message = [](auto get) {
            try {
                get();
            } catch (const std::out_of_range& e) {
                return QString::fromLatin1(e.what());
            }
            return QString();
        };
        QCOMPARE(message([] { KXExportResolutions::Get(-1); }), "resolution index is out of range");
        QCOMPARE(message([] { KXExportSizes::Get(KXExportSizes::GetSize()); }), "size index is out of range");
        // Without instances (the application object releases them in its destructor).
        KXExportResolutionsPrivate::Release();
        QCOMPARE(KXExportResolutions::Get(0), QSize(-1, -1));
        KXExportResolutions::Remove(0);
        KXExportResolutionsPrivate::Create();
    }
};

OV_TEST_MAIN(TestExportLists)
#include "tst_exportlists.moc"
