// The export resolutions and sizes: start-up from the shipped defaults or the user's file,
// the parsing rules on real INI files, and every change announced and then saved.

#include "KXExportResolutions.h"
#include "KXExportSizes.h"
#include "OVApplication.h"
#include "OVTestSupport.h"
#include "private/KXExportResolutions_p.h"
#include "private/KXExportSizes_p.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString Text(const QSize& item)
{
    return QStringLiteral("%1x%2").arg(item.width()).arg(item.height());
}

QString Text(qint64 item)
{
    return QString::number(item);
}

// The two lists, chosen by their INI group.
template <typename Private>
QStringList ItemsOf()
{
    QStringList items;
    for (const auto& item : Private::List())
        items << Text(item);
    return items;
}

QStringList Items(const QString& group)
{
    return group == "Sizes" ? ItemsOf<KXExportSizesPrivate>() : ItemsOf<KXExportResolutionsPrivate>();
}

QString UserFile(const QString& group)
{
    return OVApplication::GetUserDataFolder() +
           (group == "Sizes" ? KXExportSizeTable::FileName() : KXExportResolutionTable::FileName());
}

void Load(const QString& group, const QString& path)
{
    if (group == "Sizes")
        KXExportSizesPrivate::LoadInstance(path);
    else
        KXExportResolutionsPrivate::LoadInstance(path);
}

// The values of an INI group, in key order, as the file holds them now.
QStringList Stored(const QString& path, const QString& group)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.beginGroup(group);
    QStringList values;
    for (const QString& key : settings.childKeys())
        values << key + '=' + settings.value(key).toString();
    return values;
}

// The shipped defaults, read straight from the resource.
QStringList Defaults(const QString& group)
{
    QSettings settings(group == "Sizes" ? KXExportSizeTable::Resource() : KXExportResolutionTable::Resource(),
                       QSettings::IniFormat);
    QStringList items;
    for (int i = 0; settings.contains(group + '/' + QString::number(i)); ++i)
        items << settings.value(group + '/' + QString::number(i)).toString();
    return items;
}

QByteArray Read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

} // namespace

class TestExportLists : public QObject
{
    Q_OBJECT

private slots:
    void startUp();
    void loading_data();
    void loading();
    void editing();
    void setEqualWritesNothing_data();
    void setEqualWritesNothing();
    void get();
};

void TestExportLists::startUp()
{
    // No user file at start: the shipped defaults, then written to the user's file.
    for (const QString group : {"Resolutions", "Sizes"}) {
        QVERIFY(Defaults(group).size() >= 5);
        QCOMPARE(Items(group), Defaults(group));
        QCOMPARE(QSettings(UserFile(group), QSettings::IniFormat).value("Version"), QVariant("2.3.0"));
        // Once the user's file has "Version", it is the user's list that loads.
        Write(UserFile(group), "[General]\nVersion=1\n[Resolutions]\n0=640x480\n[Sizes]\n0=77\n");
        Load(group, UserFile(group));
        QCOMPARE(Items(group).size(), 1);
    }
}

void TestExportLists::loading_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QByteArray>("file");      // "<dir>": a folder stands at the file's place
    QTest::addColumn<QStringList>("expected"); // "<defaults>": the shipped list

    const QByteArray version = "[General]\nVersion=2.3.0\n";
    QTest::newRow("resolution rules") << "Resolutions"
                                      << version + "[Resolutions]\n0=0x600\n1=abc\n2=800x600x2\n3=10001x10\n"
                                                   "4=800x600\n5=10000x1\n6=x\n7=-1x5\n"
                                      << QStringList{"800x600", "10000x1"};
    QTest::newRow("indices 0, 1, 3") << "Resolutions" << version + "[Resolutions]\n0=1x2\n1=3x4\n3=5x6\n"
                                     << QStringList{"1x2", "3x4"};
    QTest::newRow("size rules") << "Sizes" << version + "[Sizes]\n0=0\n1=-5\n2=abc\n3=1048576\n4=9000000000\n"
                                << QStringList{"1048576", "9000000000"};
    QTest::newRow("version and no items") << "Sizes" << version << QStringList();
    QTest::newRow("no version") << "Sizes" << QByteArray("[Sizes]\n0=5\n") << QStringList{"<defaults>"};
    QTest::newRow("garbage") << "Resolutions" << QByteArray("\x01\xff[[=\n\0\0=]]", 13)
                             << QStringList{"<defaults>"};
    QTest::newRow("folder") << "Resolutions" << QByteArray("<dir>") << QStringList{"<defaults>"};
}

void TestExportLists::loading()
{
    QFETCH(QString, group);
    QFETCH(QByteArray, file);
    QFETCH(QStringList, expected);
    const QString path = OVTest::SandboxPath() + "/loading/" + QTest::currentDataTag() + ".ini";
    QDir().mkpath(file == "<dir>" ? path : QFileInfo(path).path());
    if (file != "<dir>")
        Write(path, file);
    const bool defaults = expected == QStringList{"<defaults>"};
    if (defaults)
        expected = Defaults(group);
    Load(group, path);
    QCOMPARE(Items(group), expected);
    // The defaults are saved to the user's file (where it can be written), and used only once.
    if (defaults && file != "<dir>")
        QCOMPARE(QSettings(path, QSettings::IniFormat).value("Version"), QVariant("2.3.0"));
}

void TestExportLists::editing()
{
    const QString path = OVTest::SandboxPath() + "/editing.ini";
    Write(path, "[General]\nVersion=2.3.0\n[Resolutions]\n0=1280x720\n1=3840x2160\n");
    Load("Resolutions", path);
    OVTest::SignalLog log;
    auto* list = KXExportResolutions::GetInstance();
    log.Record(list, &KXExportResolutions::Inserted, "Inserted");
    log.Record(list, &KXExportResolutions::Changhed, "Changhed");
    log.Record(list, &KXExportResolutions::Removed, "Removed");
    // Each signal comes before the save: the file still holds the list before the change.
    for (auto signal :
         {&KXExportResolutions::Inserted, &KXExportResolutions::Changhed, &KXExportResolutions::Removed})
        connect(list, signal, &log, [&] { log.Append("file:" + Stored(path, "Resolutions").join(' ')); });

    QCOMPARE(KXExportResolutions::Add(QSize(1920, 1080)), 1);
    QCOMPARE(KXExportResolutions::Add(QSize(1920, 1200)), 2);
    KXExportResolutions::Add(-5, QSize(640, 480));
    KXExportResolutions::Add(99, QSize(800, 600));
    KXExportResolutions::Set(1, QSize(1280, 720));
    KXExportResolutions::Set(6, QSize(1, 1));
    KXExportResolutions::Set(1, QSize(1280, 800));
    KXExportResolutions::Remove(-1);
    KXExportResolutions::Remove(6);
    KXExportResolutions::Remove(5);
    QCOMPARE(
        log.Entries(),
        QStringList({"Inserted(1)", "file:0=1280x720 1=3840x2160", "Inserted(2)",
                     "file:0=1280x720 1=1920x1080 2=3840x2160", "Inserted(0)",
                     "file:0=1280x720 1=1920x1080 2=1920x1200 3=3840x2160", "Inserted(5)",
                     "file:0=640x480 1=1280x720 2=1920x1080 3=1920x1200 4=3840x2160", "Changhed(1)",
                     "file:0=640x480 1=1280x720 2=1920x1080 3=1920x1200 4=3840x2160 5=800x600", "Removed(5)",
                     "file:0=640x480 1=1280x800 2=1920x1080 3=1920x1200 4=3840x2160 5=800x600"}));
    // The removed item's key is gone, and so is a stale key behind a gap.
    QSettings(path, QSettings::IniFormat).setValue("Resolutions/9", "2x2");
    KXExportResolutions::Remove(0);
    QCOMPARE(Stored(path, "Resolutions"),
             QStringList({"0=1280x800", "1=1920x1080", "2=1920x1200", "3=3840x2160"}));
    QCOMPARE(KXExportSizes::Add(100), 0);
}

void TestExportLists::setEqualWritesNothing_data()
{
    QTest::addColumn<QString>("group");
    QTest::newRow("resolutions") << "Resolutions";
    QTest::newRow("sizes") << "Sizes";
}

void TestExportLists::setEqualWritesNothing()
{
    QFETCH(QString, group);
    const QString path = OVTest::SandboxPath() + "/equal-" + group + ".ini";
    Write(path, "[General]\nVersion=2.3.0\n[" + group.toLatin1() + "]\n0=10x20\n1=30\n");
    Load(group, path);
    QFile file(path);
    const QDateTime old = QDateTime::fromSecsSinceEpoch(946684800);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(old, QFileDevice::FileModificationTime));
    file.close();
    const QByteArray bytes = Read(path);
    OVTest::SignalLog log;
    log.Record(KXExportResolutions::GetInstance(), &KXExportResolutions::Changhed, "Changhed");
    log.Record(KXExportSizes::GetInstance(), &KXExportSizes::Changhed, "Changhed");
    if (group == "Sizes")
        KXExportSizes::Set(0, 30);
    else
        KXExportResolutions::Set(0, QSize(10, 20));
    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(QFileInfo(path).lastModified(), old);
    QCOMPARE(Read(path), bytes);
}

void TestExportLists::get()
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
    QCOMPARE(message([] { KXExportResolutions::Get(KXExportResolutions::GetSize()); }),
             "resolution index is out of range");
    QCOMPARE(message([] { KXExportSizes::Get(KXExportSizes::GetSize()); }), "size index is out of range");
    QCOMPARE(KXExportSizes::Get(0), KXExportSizes::GetList().first());

    // Without instances (the application object releases them in its destructor).
    KXExportResolutionsPrivate::Release();
    KXExportSizesPrivate::Release();
    QCOMPARE(KXExportResolutions::Get(0), QSize(-1, -1));
    QCOMPARE(KXExportSizes::Get(-1), -1);
    QCOMPARE(KXExportSizes::GetSize(), -1);
    QCOMPARE(KXExportResolutions::Add(QSize(1, 1)), -1);
    QCOMPARE(KXExportSizes::GetList(), QList<qint64>());
    KXExportSizes::Add(0, 5);
    KXExportSizes::Set(0, 5);
    KXExportSizes::Remove(0);
    KXExportResolutionsPrivate::Create();
    KXExportSizesPrivate::Create();
}

OV_TEST_MAIN(TestExportLists)
#include "tst_exportlists.moc"
