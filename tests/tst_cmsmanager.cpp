// The colour profile manager over a folder of profiles made with Little CMS, bad files among
// them, and over the system's colour folder when it is there.

#include "OVCMSManager.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"
#include "private/OVCMSManager_p.h"

#include <QTemporaryDir>
#include <QtEndian>

#include <lcms2.h>

#include <atomic>
#include <thread>

namespace {

QByteArray Patched(QByteArray bytes, int at, quint32 value)
{
    qToBigEndian(value, bytes.data() + at);
    return bytes;
}

// Files that are no complete profile, each made from a good RGB profile by one fault.
QList<QPair<QString, QByteArray>> BadProfiles()
{
    const QByteArray rgb = OVTest::MakeProfile(QStringLiteral("sRGB"));
    return {{"truncated.icc", rgb.left(rgb.size() / 2)},
            {"header only.icc", rgb.left(128)},
            {"empty.icc", QByteArray()},
            {"size beyond file.icc", Patched(rgb, 0, rgb.size() + 64)},
            {"bad signature.icc", Patched(rgb, 36, 0x61637370 + 1)},
            {"tag past end.icc", Patched(rgb, 136, rgb.size() - 4)},
            {"tag count past end.icc", Patched(rgb, 128, 0x10000)},
            {"text count past end.icc", Patched(rgb, rgb.indexOf("mluc") + 8, 0x1000000)}};
}

} // namespace

class TestCMSManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void discovery();
    void badInput_data();
    void badInput();
    void workingIndex();
    void threads();
    void systemFolder_data();
    void systemFolder();
    void release();

private:
    QTemporaryDir m_dir;
    QStringList m_expected; // descriptions of the RGB profiles, in index order
};

void TestCMSManager::initTestCase()
{
    const QString dir = m_dir.path() + QLatin1Char('/');
    // Upper case sorts first; the suffix matches in any case.
    for (QString name : {"c.ICC", "a.icc", "B.icm", "notes.txt", ".hidden.icc"})
        QVERIFY(OVTest::WriteFile(dir + name, OVTest::MakeProfile(name == "a.icc" ? "wide" : "sRGB", name)));
    for (QString kind : {"gray", "lab", "cmyk"})
        QVERIFY(OVTest::WriteFile(dir + kind + ".Icm", OVTest::MakeProfile(kind)));
    for (const auto& bad : BadProfiles())
        QVERIFY(OVTest::WriteFile(dir + bad.first, bad.second));
    QVERIFY(QDir(dir).mkdir("x.icc"));
    QVERIFY(QFile::link(dir + "missing", dir + "dangling.icc"));
    QVERIFY(OVTest::WriteFile(dir + "unreadable.icc", OVTest::MakeProfile("sRGB", "unreadable.icc")));
    QVERIFY(QFile::setPermissions(dir + "unreadable.icc", {}));
    m_expected = QStringList{"B.icm", "a.icc", "c.ICC"};
    if (QFileInfo(dir + "unreadable.icc").isReadable()) // as root
        m_expected << "unreadable.icc";
    OVCMSManager::InitInstance(m_dir.path());
}

void TestCMSManager::discovery()
{
    OVCMSManager* manager = OVCMSManager::GetInstance();
    QVERIFY(manager);
    QStringList found;
    for (int i = 0; i < manager->GetRGBProfileCount(); ++i) {
        const OVCMSProfile profile = manager->GetRGBProfile(i);
        found << profile.GetDescription();
        QCOMPARE(profile.GetFilePath(), m_dir.path() + QDir::separator() + found.last());
        QCOMPARE(profile.GetColorSpace(), quint32(OVCMSProfile::RGBSpace));
        QFile file(profile.GetFilePath());
        QVERIFY(!file.open(QIODevice::ReadOnly) || profile.GetData() == file.readAll());
    }
    QCOMPARE(found, m_expected);
    QVERIFY(!manager->GetRGBProfile(-1).IsValid());
    QVERIFY(!manager->GetRGBProfile(m_expected.size()).IsValid());

    // A second InitInstance leaves the first folder's list in place.
    QTemporaryDir other;
    QVERIFY(OVTest::WriteFile(other.filePath("z.icc"), OVTest::MakeProfile("sRGB")));
    OVCMSManager::InitInstance(other.path());
    QCOMPARE(OVCMSManager::GetInstance(), manager);
    QCOMPARE(manager->GetRGBProfile(0).GetDescription(), m_expected.first());
}

void TestCMSManager::badInput_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const auto& bad : BadProfiles())
        QTest::newRow(qPrintable(bad.first)) << bad.second;
}

void TestCMSManager::badInput()
{
    QFETCH(QByteArray, bytes);
    OVCMSProfile profile;
    QVERIFY(!profile.LoadFromData(bytes));
    QVERIFY(!profile.Load(m_dir.filePath(QTest::currentDataTag())));
    QVERIFY(!profile.IsValid());
    QVERIFY(profile.GetDescription().isEmpty());
}

void TestCMSManager::workingIndex()
{
    OVCMSManager* manager = OVCMSManager::GetInstance();
    OVTest::SignalLog log;
    log.Record(manager, &OVCMSManager::WorkingRGBIndexChanged, "changed");
    // The receiver sees the new value stored and the lock free.
    connect(manager, &OVCMSManager::WorkingRGBIndexChanged, &log,
            [&] { log.Append(QString("read(%1)").arg(manager->GetWorkingRGBIndex())); });
    QCOMPARE(manager->GetWorkingRGBIndex(), -1);
    for (int index : {5, 5, 1, -1, -1, 0})
        manager->SetWorkingRGBIndex(index);
    QCOMPARE(log.Take(), (QStringList{"changed(5)", "read(5)", "changed(1)", "read(1)", "changed(-1)",
                                      "read(-1)", "changed(0)", "read(0)"}));
}

// Four threads read profiles and set the index while a receiver of the signal, called on
// each setting thread, reads back.
void TestCMSManager::threads()
{
    OVCMSManager* manager = OVCMSManager::GetInstance();
    constexpr int perThread = 400;
    std::atomic<int> emitted{0}, wrong{0};
    connect(
        manager, &OVCMSManager::WorkingRGBIndexChanged, this,
        [&](int) {
            ++emitted;
            if (manager->GetRGBProfile(manager->GetRGBProfileCount() - 1).GetDescription() !=
                m_expected.last())
                ++wrong;
            manager->GetWorkingRGBIndex();
        },
        Qt::DirectConnection);
    std::vector<std::thread> workers;
    for (int t = 0; t < 4; ++t) {
        workers.emplace_back([&, t] {
            for (int i = 0; i < perThread; ++i) {
                const int index = i % (m_expected.size() + 2) - 1;
                const OVCMSProfile copy = manager->GetRGBProfile(index);
                if (copy.GetDescription() != m_expected.value(index))
                    ++wrong;
                manager->SetWorkingRGBIndex(1000 * (t + 1) + i);
            }
        });
    }
    for (std::thread& worker : workers)
        worker.join();
    disconnect(manager, nullptr, this, nullptr);
    QCOMPARE(wrong.load(), 0);
    QCOMPARE(emitted.load(), 4 * perThread);
    QCOMPARE(manager->GetWorkingRGBIndex() % 1000, perThread - 1);
}

void TestCMSManager::systemFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("icc-profiles-free") << "/usr/share/color/icc";
    QTest::newRow("colord") << "/usr/share/color/icc/colord";
}

// The folder's RGB profiles as Little CMS sees them, against the manager's list.
void TestCMSManager::systemFolder()
{
    QFETCH(QString, folder);
    const QStringList names = QDir(folder).entryList({"*.icc", "*.icm"}, QDir::Files, QDir::Name);
    if (names.isEmpty())
        QSKIP("no system colour profiles here");
    QStringList expected, found;
    for (const QString& name : names) {
        const QString path = folder + QDir::separator() + name;
        cmsHPROFILE profile = cmsOpenProfileFromFile(qPrintable(path), "r");
        if (profile && cmsGetColorSpace(profile) == cmsSigRgbData)
            expected << path;
        if (profile)
            cmsCloseProfile(profile);
    }
    OVCMSManagerPrivate manager;
    QCOMPARE(manager.Discover(folder), expected.size());
    for (const OVCMSProfile* profile : manager.profiles) {
        found << profile->GetFilePath();
        QVERIFY2(!profile->GetDescription().isEmpty(), qPrintable(found.last()));
    }
    QCOMPARE(found, expected);
    QVERIFY(!expected.isEmpty());
}

void TestCMSManager::release()
{
    OVCMSManager::ReleaseInstance();
    QVERIFY(!OVCMSManager::GetInstance());
    OVCMSManager::ReleaseInstance();
    // Once per process: no second instance.
    OVCMSManager::InitInstance(m_dir.path());
    QVERIFY(!OVCMSManager::GetInstance());
}

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    QCoreApplication app(argc, argv);
    TestCMSManager test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_cmsmanager.moc"
