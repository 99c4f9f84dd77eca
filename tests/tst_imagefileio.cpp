// Readers, writers, the readers pool under many threads, and the open and save hooks.

#include "OVApplication.h"
#include "OVImageFileFixtures.h"
#include "OVImageFileManager.h"
#include "OVTestSupport.h"
#include "private/OVImageFileManager_p.h"

#include <QSemaphore>
#include <QSet>
#include <QThread>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using OVTest::FakeImagePlugin;

namespace {

OVImageFileManager* Manager()
{
    return OVImageFileManager::GetInstance();
}

QString Name(const QObject* object)
{
    return object ? object->objectName() : QStringLiteral("-");
}

// Every reader the plug-ins made, sorted, against every reader they got back.
void VerifyEachReaderReleasedOnce(const QList<FakeImagePlugin*>& plugins, const OVTest::CallLog& calls)
{
    QStringList made;
    for (const FakeImagePlugin* plugin : plugins) {
        for (const OVTest::FakeReader* reader : plugin->Readers())
            made << plugin->objectName() + QStringLiteral(".ReleaseReader(") + reader->objectName() + ')';
    }
    QStringList released = calls.Matching(QString());
    released = released.filter(QStringLiteral(".ReleaseReader("));
    made.sort();
    released.sort();
    QCOMPARE(released, made);
}

// Records what the hooks were given.
struct HookLog
{
    QStringList calls;
    QString stopAt;
    bool result = true;
};

bool RecordOpen(const QString& path, bool* flag, void* data)
{
    auto* log = static_cast<HookLog*>(data);
    log->calls
        << QStringLiteral("open(%1,%2)").arg(path, flag ? QStringLiteral("flag") : QStringLiteral("null"));
    if (flag && path == log->stopAt)
        *flag = false;
    return log->result;
}

bool RecordSave(KXDocumentInterface* document, void* data)
{
    auto* log = static_cast<HookLog*>(data);
    log->calls << QStringLiteral("save(%1)").arg(document ? "doc" : "null");
    return log->result;
}

} // namespace

class TestImageFileIO : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void createAndRelease();
    void orphanedReadersAndWriters();
    void poolEntries();
    void poolLastInFirstOut();
    void borrowerBeyondPoolWaits();
    void releaseWaitsForBorrowedReader();
    void releasePoolAfterMisuse();
    void poolStress();
    void pluginDestroyedWhilePooled();
    void hooks_data();
    void hooks();

private:
    FakeImagePlugin* Add(const QString& definition);

    std::vector<std::unique_ptr<FakeImagePlugin>> m_plugins;
    OVTest::CallLog m_calls;
    const int m_n = QThread::idealThreadCount();
};

void TestImageFileIO::init()
{
    OVImageFileManager::InitInstance();
    OVTest::FakeReader::s_overlaps.storeRelaxed(0);
}

void TestImageFileIO::cleanup()
{
    OVImageFileManager::ReleaseReadersPool();
    OVImageFileManager::ReleaseInstance();
    m_plugins.clear();
    m_calls.Take();
}

FakeImagePlugin* TestImageFileIO::Add(const QString& definition)
{
    m_plugins.push_back(std::make_unique<FakeImagePlugin>(definition, &m_calls));
    Manager()->Register(m_plugins.back().get());
    return m_plugins.back().get();
}

void TestImageFileIO::createAndRelease()
{
    FakeImagePlugin* a = Add(QStringLiteral("A png:rw jpg:r r@RA w@WA"));
    Add(QStringLiteral("B png:r r@RB"));
    Add(QStringLiteral("N gif:rw r@RN w@WN null"));
    m_calls.Take();

    OVImageFileReader* fromB = Manager()->CreateReader(QStringLiteral("PNG"));
    OVImageFileReader* byUID = Manager()->CreateReaderByUID(QStringLiteral("RA"));
    OVImageFileWriter* writer = Manager()->CreateWriter(QStringLiteral("Png"));
    OVImageFileWriter* writerByUID = Manager()->CreateWriterByUID(QStringLiteral("WA"));
    QCOMPARE(Name(fromB), QStringLiteral("B.r1"));
    QCOMPARE(Name(byUID), QStringLiteral("A.r1"));
    QCOMPARE(Name(writer), QStringLiteral("A.w1"));
    QCOMPARE(Name(writerByUID), QStringLiteral("A.w2"));
    // Unknown formats and UIDs ask no plug-in; a plug-in that makes nothing gives null.
    QCOMPARE(Manager()->CreateReader(QStringLiteral("tif")), nullptr);
    QCOMPARE(Manager()->CreateReaderByUID(QStringLiteral("ra")), nullptr);
    QCOMPARE(Manager()->CreateWriter(QStringLiteral("jpg")), nullptr);
    QCOMPARE(Manager()->CreateReader(QStringLiteral("gif")), nullptr);
    QCOMPARE(Manager()->CreateWriterByUID(QStringLiteral("WN")), nullptr);
    QCOMPARE(m_calls.Take(),
             QStringList({"B.CreateReader(png)", "A.CreateReaderByUID(RA)", "A.CreateWriter(png)",
                          "A.CreateWriterByUID(WA)", "N.CreateReader(gif)", "N.CreateWriterByUID(WN)"}));

    // Each object goes back to the plug-in that made it, once; unregistering a plug-in
    // leaves its live objects to be given back later.
    QVERIFY(Manager()->Unregister(a));
    for (int round = 0; round < 2; ++round) {
        Manager()->ReleaseReader(fromB);
        Manager()->ReleaseReader(byUID);
        Manager()->ReleaseWriter(writer);
        Manager()->ReleaseWriter(writerByUID);
        Manager()->ReleaseReader(nullptr);
        Manager()->ReleaseWriter(nullptr);
        Manager()->ReleaseAcquiredReader(byUID);
    }
    QCOMPARE(m_calls.Take(), QStringList({"B.ReleaseReader(B.r1)", "A.ReleaseReader(A.r1)",
                                          "A.ReleaseWriter(A.w1)", "A.ReleaseWriter(A.w2)"}));
}

void TestImageFileIO::orphanedReadersAndWriters()
{
    Add(QStringLiteral("A png:rw"));
    FakeImagePlugin* b = Add(QStringLiteral("B jpg:rw"));

    // A reader destroyed by someone else is forgotten.
    delete Manager()->CreateReader(QStringLiteral("png"));
    // A plug-in destroyed while registered takes its live objects out of the registry: the
    // one that outlives it is not handed back to anybody afterwards.
    std::unique_ptr<OVImageFileReader> survivor(Manager()->CreateReader(QStringLiteral("png")));
    survivor->setParent(nullptr);
    QVERIFY(Manager()->CreateWriter(QStringLiteral("png")));
    // A plug-in unregistered and then destroyed cannot be handed anything either.
    std::unique_ptr<OVImageFileReader> stray(Manager()->CreateReader(QStringLiteral("jpg")));
    stray->setParent(nullptr);
    QVERIFY(Manager()->Unregister(b));
    m_plugins.clear();
    m_calls.Take();

    Manager()->ReleaseReader(survivor.get());
    Manager()->ReleaseReader(stray.get());
    QCOMPARE(m_calls.Take(), QStringList());
    QCOMPARE(Manager()->GetPluginForRead(QStringLiteral("png")), nullptr);
}

void TestImageFileIO::poolEntries()
{
    // One entry per set of formats a reader declares: jpg's readers serve jpeg too, and tif's
    // readers, which declare only tiff, leave tif without an entry.
    FakeImagePlugin* a = Add(QStringLiteral("A gif:r jpg:r tif:r png:w jpg>jpg,jpeg tif>tiff"));
    FakeImagePlugin* n = Add(QStringLiteral("N bmp:r null"));
    m_calls.Take();
    OVImageFileManager::InitReadersPool();

    QStringList expected;
    for (const char* format : {"bmp", "gif", "jpg", "tif"}) {
        FakeImagePlugin* maker = QByteArray(format) == "bmp" ? n : a;
        for (int i = 0; i < m_n; ++i)
            expected << QStringLiteral("%1.CreateReader(%2)").arg(maker->objectName(), format);
    }
    QCOMPARE(m_calls.Take(), expected);

    QCOMPARE(Manager()->AcquireReader(QStringLiteral("tif")), nullptr);
    QCOMPARE(Manager()->AcquireReader(QStringLiteral("bmp")), nullptr);
    QCOMPARE(Manager()->AcquireReader(QStringLiteral("png")), nullptr);
    QSet<OVImageFileReader*> jpegReaders;
    for (const char* format : {"jpeg", "JPG"}) {
        for (int i = 0; i < m_n; ++i) {
            OVImageFileReader* reader = Manager()->AcquireReader(QLatin1String(format));
            QVERIFY(reader);
            QCOMPARE(reader->GetFormats(), QStringList({"jpg", "jpeg"}));
            jpegReaders << reader;
        }
        for (OVImageFileReader* reader : qAsConst(jpegReaders))
            Manager()->ReleaseAcquiredReader(reader);
    }
    QCOMPARE(jpegReaders.size(), m_n);
    OVImageFileReader* tiff = Manager()->AcquireReader(QStringLiteral("tiff"));
    QCOMPARE(tiff->GetFormats(), QStringList{"tiff"});
    Manager()->ReleaseAcquiredReader(tiff);
    // Every pooled reader goes back to its plug-in once at the end.
    OVImageFileManager::ReleaseReadersPool();
    VerifyEachReaderReleasedOnce({a}, m_calls);
}

void TestImageFileIO::poolLastInFirstOut()
{
    FakeImagePlugin* a = Add(QStringLiteral("A jpg:r"));
    OVImageFileManager::InitReadersPool();
    const QString jpg = QStringLiteral("jpg");

    OVImageFileReader* first = Manager()->AcquireReader(jpg);
    QCOMPARE(first, a->Readers().last());
    if (m_n > 1) {
        OVImageFileReader* second = Manager()->AcquireReader(jpg);
        Manager()->ReleaseAcquiredReader(second);
        Manager()->ReleaseAcquiredReader(first);
        QCOMPARE(Manager()->AcquireReader(jpg), first);
        QCOMPARE(Manager()->AcquireReader(jpg), second);
        Manager()->ReleaseAcquiredReader(second);
    }
    // Returned twice, a reader is lent twice; the pool still hands each reader back once.
    Manager()->ReleaseAcquiredReader(first);
    Manager()->ReleaseAcquiredReader(first);
    QCOMPARE(Manager()->AcquireReader(jpg), first);
    QCOMPARE(Manager()->AcquireReader(jpg), first);
    Manager()->ReleaseAcquiredReader(first);
    Manager()->ReleaseAcquiredReader(first);
    m_calls.Take();
    OVImageFileManager::ReleaseReadersPool();
    VerifyEachReaderReleasedOnce({a}, m_calls);
}

void TestImageFileIO::borrowerBeyondPoolWaits()
{
    Add(QStringLiteral("A jpg:r jpg>jpg,jpeg"));
    OVImageFileManager::InitReadersPool();
    std::vector<OVImageFileReader*> held;
    for (int i = 0; i < m_n; ++i)
        held.push_back(Manager()->AcquireReader(QStringLiteral("jpg")));

    // With every reader out, the borrower can only get the one that comes back.
    std::atomic<OVImageFileReader*> got{nullptr};
    std::thread borrower([&] { got = Manager()->AcquireReader(QStringLiteral("JPEG")); });
    Manager()->ReleaseAcquiredReader(held.front());
    borrower.join();
    QCOMPARE(got.load(), held.front());
    for (OVImageFileReader* reader : held)
        Manager()->ReleaseAcquiredReader(reader);
}

namespace {
// Lets a worker go on once the pool waits for the reader it holds.
QSemaphore s_poolWaits;
void PoolWaits()
{
    s_poolWaits.release();
}

// Holds a pooled reader until the pool waits for it, then uses it and returns it.
std::thread HoldUntilWaitedFor(OVTest::CallLog& calls, const QString& format, QSemaphore& borrowed)
{
    OVImageFileManagerPrivate::drainWaits = &PoolWaits;
    return std::thread([&calls, format, &borrowed] {
        OVImageFileReader* reader = Manager()->AcquireReader(format);
        borrowed.release();
        s_poolWaits.tryAcquire(1, 60000);
        calls.Add(
            QStringLiteral("returned(%1,%2)").arg(reader->objectName(), reader->GetFormats().join(',')));
        Manager()->ReleaseAcquiredReader(reader);
    });
}
} // namespace

void TestImageFileIO::releaseWaitsForBorrowedReader()
{
    FakeImagePlugin* a = Add(QStringLiteral("A jpg:r"));
    OVImageFileManager::InitReadersPool();
    if (m_n < 2)
        QSKIP("Needs two readers per pool entry");

    // The worker holds the last reader made; taking out the first, which is idle, waits for
    // the worker's to come back, since it needs the whole entry idle.
    QSemaphore borrowed;
    std::thread worker = HoldUntilWaitedFor(m_calls, QStringLiteral("jpg"), borrowed);
    borrowed.acquire();
    m_calls.Take();
    Manager()->ReleaseReader(a->Readers().first());
    worker.join();
    OVImageFileManagerPrivate::drainWaits = nullptr;
    QCOMPARE(m_calls.Take(),
             (QStringList{QStringLiteral("returned(A.r%1,jpg)").arg(m_n), "A.ReleaseReader(A.r1)"}));
}

void TestImageFileIO::releasePoolAfterMisuse()
{
    // A plug-in that deletes the readers it gets back, and readers returned more often than
    // they were lent: each reader still goes back once, and not while a worker holds it.
    FakeImagePlugin* a = Add(QStringLiteral("A jpg:r png:r disposes"));
    OVImageFileManager::InitReadersPool();
    QStringList names;
    for (const OVTest::FakeReader* reader : a->Readers())
        names << reader->objectName();
    for (const char* format : {"jpg", "png"}) {
        OVImageFileReader* reader = Manager()->AcquireReader(QLatin1String(format));
        Manager()->ReleaseAcquiredReader(reader);
        Manager()->ReleaseAcquiredReader(reader);
    }
    // The worker borrows png's top reader while a second copy of it stays idle.
    QSemaphore borrowed;
    std::thread worker = HoldUntilWaitedFor(m_calls, QStringLiteral("png"), borrowed);
    borrowed.acquire();
    m_calls.Take();
    OVImageFileManager::ReleaseReadersPool();
    worker.join();
    OVImageFileManagerPrivate::drainWaits = nullptr;

    QStringList expected;
    for (int i = m_n; i > 0; --i)
        expected << "A.ReleaseReader(" + names.at(i - 1) + ')';
    expected << "returned(" + names.last() + ",png)";
    for (int i = 2 * m_n; i > m_n; --i)
        expected << "A.ReleaseReader(" + names.at(i - 1) + ')';
    QCOMPARE(m_calls.Take(), expected);
    QVERIFY(a->Readers().isEmpty());
}

void TestImageFileIO::poolStress()
{
    FakeImagePlugin* a = Add(QStringLiteral("A jpg:r png:r"));
    OVImageFileManager::InitReadersPool();
    const int threads = 2 * m_n + 1;
    const int rounds = 600;

    std::atomic<int> inUse{0};
    std::atomic<int> mostInUse{0};
    std::atomic<int> failures{0};
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t) {
        workers.emplace_back([&, t] {
            const QString format = t % 2 ? QStringLiteral("JPG") : QStringLiteral("png");
            QImage image;
            for (int round = 0; round < rounds; ++round) {
                OVImageFileReader* reader = Manager()->AcquireReader(format);
                if (!reader || !reader->GetFormats().contains(format.toLower()))
                    ++failures;
                const int now = ++inUse;
                int most = mostInUse;
                while (now > most && !mostInUse.compare_exchange_weak(most, now)) {
                }
                if (reader)
                    reader->Read(QString(), image);
                --inUse;
                Manager()->ReleaseAcquiredReader(reader);
            }
        });
    }
    for (std::thread& worker : workers)
        worker.join();

    QCOMPARE(failures.load(), 0);
    QCOMPARE(OVTest::FakeReader::s_overlaps.loadRelaxed(), 0);
    QVERIFY(mostInUse <= 2 * m_n);
    m_calls.Take();
    OVImageFileManager::ReleaseReadersPool();
    QCOMPARE(a->Readers().size(), 2 * m_n);
    VerifyEachReaderReleasedOnce({a}, m_calls);
}

void TestImageFileIO::pluginDestroyedWhilePooled()
{
    Add(QStringLiteral("A jpg:r"));
    FakeImagePlugin* b = Add(QStringLiteral("B png:r"));
    OVImageFileManager::InitReadersPool();
    m_plugins.erase(m_plugins.begin());
    m_calls.Take();

    OVImageFileReader* reader = Manager()->AcquireReader(QStringLiteral("png"));
    QVERIFY(reader);
    Manager()->ReleaseAcquiredReader(reader);
    OVImageFileManager::ReleaseReadersPool();
    VerifyEachReaderReleasedOnce({b}, m_calls);
    // After the pool is gone, its formats give nothing.
    QCOMPARE(Manager()->AcquireReader(QStringLiteral("png")), nullptr);
    Manager()->ReleaseAcquiredReader(reader);
}

void TestImageFileIO::hooks_data()
{
    QTest::addColumn<bool>("installed");
    QTest::addColumn<QString>("stopAt");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<bool>("flagAfter");

    QTest::newRow("no hook") << false << "" << false << QStringList{} << false;
    QTest::newRow("hook runs the whole batch")
        << true << "" << true
        << OVTest::Words("open(one,flag) open(one,null) open(a,flag) open(b,flag) open(c,flag) save(doc)")
        << true;
    QTest::newRow("hook stops the batch at the second path")
        << true << "b" << false
        << OVTest::Words("open(one,flag) open(one,null) open(a,flag) open(b,flag) save(doc)") << true;
}

void TestImageFileIO::hooks()
{
    QFETCH(bool, installed);
    QFETCH(QString, stopAt);
    QFETCH(bool, result);
    QFETCH(QStringList, calls);
    QFETCH(bool, flagAfter);

    HookLog log{{}, stopAt, result};
    HookLog replaced;
    Manager()->Register(&RecordOpen, &replaced);
    Manager()->Register(&RecordSave, &replaced);
    Manager()->Register(installed ? &RecordOpen : OVImageFileManager::OpenHook(nullptr), &log);
    Manager()->Register(installed ? &RecordSave : OVImageFileManager::SaveHook(nullptr), &log);

    bool flag = true;
    QCOMPARE(Manager()->Open(QStringLiteral("one"), &flag), result);
    QCOMPARE(flag, flagAfter);
    QCOMPARE(Manager()->Open(QStringLiteral("one"), nullptr), result);
    Manager()->Open(OVTest::Words("a b c"));
    KXDocumentInterface* document = reinterpret_cast<KXDocumentInterface*>(&log);
    QCOMPARE(Manager()->Save(document), result);
    QCOMPARE(log.calls, calls);
    QCOMPARE(replaced.calls, QStringList());
}

OV_TEST_MAIN(TestImageFileIO)
#include "tst_imagefileio.moc"
