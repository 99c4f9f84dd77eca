// The colour profile manager over a folder of profiles made with Little CMS, bad files among
// them, and over the system's colour folders when they are there.

#include "OVCMSManager.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"
#include "private/OVCMSManager_p.h"

#include <lcms2.h>

#include <atomic>
#include <thread>

class TestCMSManager : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;
    QStringList m_expected{"B.icm", "a.icc", "c.ICC"}; // descriptions, in index order

private slots:
    void initTestCase()
    {
        const QString dir = m_dir.path() + '/';
        // Upper case sorts first, the suffix matches in any case, and only those files count.
        for (QString name : {"c.ICC", "a.icc", "B.icm", "notes.txt", ".hidden.icc", "unreadable.icc"})
            QVERIFY(
                OVTest::WriteFile(dir + name, OVTest::MakeProfile(name == "a.icc" ? "wide" : "sRGB", name)));
        for (QString kind : {"gray", "lab", "cmyk"})
            QVERIFY(OVTest::WriteFile(dir + kind + ".Icm", OVTest::MakeProfile(kind)));
        // Bad files, each a good RGB profile with one fault.
        const QByteArray rgb = OVTest::MakeProfile("sRGB");
        const auto patched = [&rgb](int at, quint32 value) {
            QByteArray bytes = rgb;
            qToBigEndian(value, bytes.data() + at);
            return bytes;
        };
        const QList<QPair<QString, QByteArray>> bad = {
            {"truncated", rgb.left(rgb.size() / 2)},
            {"header only", rgb.left(128)},
            {"empty", {}},
            {"size beyond file", patched(0, rgb.size() + 64)},
            {"bad signature", patched(36, 0x61637371)},
            {"tag past end", patched(136, rgb.size() - 4)},
            {"tag count past end", patched(128, 0x10000)},
            {"text count past end", patched(rgb.indexOf("mluc") + 8, 0x1000000)}};
        for (const auto& [name, bytes] : bad) {
            QVERIFY(OVTest::WriteFile(dir + name + ".icc", bytes));
            QVERIFY2(!OVCMSProfile().LoadFromData(bytes), qPrintable(name));
        }
        QVERIFY(QDir(dir).mkdir("x.icc"));
        QVERIFY(QFile::link(dir + "missing", dir + "dangling.icc"));
        QVERIFY(QFile::setPermissions(dir + "unreadable.icc", {}));
        if (QFileInfo(dir + "unreadable.icc").isReadable()) // as root
            m_expected << "unreadable.icc";
        OVCMSManager::InitInstance(m_dir.path());
    }

    void discovery()
    {
        OVCMSManager* manager = OVCMSManager::GetInstance();
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
        OVCMSManager::InitInstance(QDir::tempPath());
        QCOMPARE(OVCMSManager::GetInstance(), manager);
        QCOMPARE(manager->GetRGBProfileCount(), m_expected.size());
    }

    void workingIndex()
    {
        OVCMSManager* manager = OVCMSManager::GetInstance();
        OVTest::SignalLog log;
        log.Record(manager, &OVCMSManager::WorkingRGBIndexChanged, "changed");
        // The receiver finds the new value stored and the lock free.
        connect(manager, &OVCMSManager::WorkingRGBIndexChanged, &log,
                [&] { log.Append(QString("read(%1)").arg(manager->GetWorkingRGBIndex())); });
        QCOMPARE(manager->GetWorkingRGBIndex(), -1);
        for (int index : {5, 5, 1, -1, -1, 0})
            manager->SetWorkingRGBIndex(index);
        QCOMPARE(
            log.Take(),
            OVTest::Words("changed(5) read(5) changed(1) read(1) changed(-1) read(-1) changed(0) read(0)"));
    }

    // Four threads read profiles and set the index while a receiver of the signal, called on
    // each setting thread, calls back in.
    void threads()
    {
        OVCMSManager* manager = OVCMSManager::GetInstance();
        constexpr int perThread = 400;
        std::atomic<int> emitted{0}, wrong{0};
        const auto check = [&](int index) {
            if (manager->GetRGBProfile(index).GetDescription() != m_expected.value(index))
                ++wrong;
        };
        connect(
            manager, &OVCMSManager::WorkingRGBIndexChanged, this,
            [&](int index) {
                ++emitted;
                check(index % 1000 % (m_expected.size() + 1));
                manager->GetWorkingRGBIndex();
            },
            Qt::DirectConnection);
        std::vector<std::thread> workers;
        for (int t = 1; t <= 4; ++t) {
            workers.emplace_back([&, t] {
                for (int i = 0; i < perThread; ++i) {
                    check(i % (m_expected.size() + 2) - 1);
                    manager->SetWorkingRGBIndex(1000 * t + i);
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

    // The system's RGB profiles as Little CMS sees them, against the list discovery makes.
    void systemFolders()
    {
        if (!QFile::exists("/usr/share/color/icc/sRGB.icc"))
            QSKIP("the system's colour profiles are not installed");
        for (const QString folder : {"/usr/share/color/icc", "/usr/share/color/icc/colord"}) {
            QStringList expected, found;
            for (const QString& name : QDir(folder).entryList({"*.icc", "*.icm"}, QDir::Files, QDir::Name)) {
                const QString path = folder + QDir::separator() + name;
                if (cmsHPROFILE profile = cmsOpenProfileFromFile(qPrintable(path), "r")) {
                    if (cmsGetColorSpace(profile) == cmsSigRgbData)
                        expected << path;
                    cmsCloseProfile(profile);
                }
            }
            OVCMSManagerPrivate manager;
            QCOMPARE(manager.Discover(folder), expected.size());
            for (const OVCMSProfile* profile : manager.profiles) {
                found << profile->GetFilePath();
                QVERIFY2(!profile->GetDescription().isEmpty(), qPrintable(found.last()));
            }
            QCOMPARE(found, expected);
            QVERIFY(!found.isEmpty());
        }
    }

    void release()
    {
        OVCMSManager::ReleaseInstance();
        QVERIFY(!OVCMSManager::GetInstance());
        OVCMSManager::ReleaseInstance();
        // Once per process: no second instance.
        OVCMSManager::InitInstance(m_dir.path());
        QVERIFY(!OVCMSManager::GetInstance());
    }
};

OV_TEST_MAIN(TestCMSManager, QCoreApplication)

#include "tst_cmsmanager.moc"
