// Readers, writers, the readers pool under many threads and under misuse, and the open and
// save hooks.

#include "OVApplication.h"
#include "OVImageFileFixtures.h"
#include "OVImageFileManager.h"
#include "OVTestSupport.h"
#include "private/OVReadersPool_p.h"

#include <QSemaphore>
#include <QThread>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using OVTest::Describe;
using OVTest::FakeImagePlugin;
using OVTest::Words;

namespace {

OVImageFileManager* Manager()
{
    return OVImageFileManager::GetInstance();
}

// Every reader the plug-ins made against every reader they got back, both sorted.
void VerifyEachReaderReleasedOnce(const FakeImagePlugin* plugin, OVTest::CallLog& calls)
{
    QStringList made;
    for (const OVTest::FakeReader* reader : plugin->Readers())
        made << plugin->objectName() + QStringLiteral(".ReleaseReader(") + reader->objectName() + ')';
    QStringList released = calls.Take().filter(QStringLiteral(".ReleaseReader("));
    made.sort();
    released.sort();
    QCOMPARE(released, made);
}

// Lets a worker go on once the pool waits for the reader it holds.
QSemaphore s_poolWaits;

// A worker that holds a pooled reader until the pool waits for it, then uses it and returns it;
// started once it holds the reader, with the calls so far taken out of the log.
std::thread HoldUntilWaitedFor(OVTest::CallLog& calls, const QString& format)
{
    OVReadersPool::drainWaits = [] { s_poolWaits.release(); };
    static QSemaphore borrowed; // outlives the worker's release()
    std::thread worker([&calls, format] {
        OVImageFileReader* reader = Manager()->AcquireReader(format);
        borrowed.release();
        s_poolWaits.tryAcquire(1, 60000);
        calls.Add(
            QStringLiteral("returned(%1,%2)").arg(reader->objectName(), reader->GetFormats().join(',')));
        Manager()->ReleaseAcquiredReader(reader);
    });
    borrowed.acquire();
    calls.Take();
    return worker;
}

// Records what the hooks were given in the QStringList data points to; the open hook stops a batch
// at "b", and both answer true.
bool RecordOpen(const QString& path, bool* flag, void* data)
{
    *static_cast<QStringList*>(data) << QStringLiteral("open(%1,%2)").arg(path, flag ? "flag" : "null");
    if (flag && path == QLatin1String("b"))
        *flag = false;
    return true;
}

bool RecordSave(KXDocumentInterface* document, void* data)
{
    *static_cast<QStringList*>(data) << QStringLiteral("save(%1)").arg(document ? "doc" : "null");
    return true;
}

} // namespace

class TestImageFileIO : public QObject
{
    Q_OBJECT

private slots:
    void init() { OVImageFileManager::InitInstance(); }

    void cleanup()
    {
        OVReadersPool::drainWaits = nullptr;
        OVImageFileManager::ReleaseReadersPool();
        OVImageFileManager::ReleaseInstance();
        m_plugins.clear();
        m_calls.Take();
    }

    void createAndRelease()
    {
        FakeImagePlugin* a = Add(QStringLiteral("A png:rw jpg:r r@RA w@WA"));
        Add(QStringLiteral("B png:r r@RB"));
        Add(QStringLiteral("N gif:rw r@RN w@WN null"));
        m_calls.Take();

        OVImageFileReader* fromB = Manager()->CreateReader(QStringLiteral("PNG"));
        OVImageFileReader* byUID = Manager()->CreateReaderByUID(QStringLiteral("RA"));
        OVImageFileWriter* writer = Manager()->CreateWriter(QStringLiteral("Png"));
        OVImageFileWriter* writerByUID = Manager()->CreateWriterByUID(QStringLiteral("WA"));
        QCOMPARE(Describe(fromB) + Describe(byUID) + Describe(writer) + Describe(writerByUID),
                 QStringLiteral("B.r1A.r1A.w1A.w2"));
        // Unknown formats and UIDs ask no plug-in; a plug-in that makes nothing gives null.
        QCOMPARE(Manager()->CreateReader(QStringLiteral("tif")), nullptr);
        QCOMPARE(Manager()->CreateReaderByUID(QStringLiteral("ra")), nullptr);
        QCOMPARE(Manager()->CreateWriter(QStringLiteral("jpg")), nullptr);
        QCOMPARE(Manager()->CreateReader(QStringLiteral("gif")), nullptr);
        QCOMPARE(Manager()->CreateWriterByUID(QStringLiteral("WN")), nullptr);
        QCOMPARE(m_calls.Take(),
                 Words("B.CreateReader(png) A.CreateReaderByUID(RA) A.CreateWriter(png) "
                       "A.CreateWriterByUID(WA) N.CreateReader(gif) N.CreateWriterByUID(WN)"));

        // Each object goes back to the plug-in that made it, once; unregistering a plug-in
        // leaves its live objects to be given back later.
        QVERIFY(Manager()->Unregister(a));
        for (int round = 0; round < 2; ++round) {
            Manager()->ReleaseReader(fromB);
            Manager()->ReleaseReader(byUID);
            Manager()->ReleaseWriter(writer);
            Manager()->ReleaseWriter(writerByUID);
            Manager()->ReleaseReader(nullptr);
            Manager()->ReleaseAcquiredReader(byUID);
        }
        QCOMPARE(m_calls.Take(), Words("B.ReleaseReader(B.r1) A.ReleaseReader(A.r1) A.ReleaseWriter(A.w1) "
                                       "A.ReleaseWriter(A.w2)"));
    }

    void orphanedReadersAndWriters()
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
    }

    void poolEntries()
    {
        // One entry per set of formats a reader declares: jpg's readers serve jpeg too, and tif's
        // readers, which declare only tiff, leave tif without an entry.
        FakeImagePlugin* a = Add(QStringLiteral("A gif:r jpg:r tif:r png:w jpg>jpg,jpeg tif>tiff"));
        Add(QStringLiteral("N bmp:r null"));
        m_calls.Take();
        OVImageFileManager::InitReadersPool();
        QStringList expected;
        for (const QString& call : Words("N.CreateReader(bmp) A.CreateReader(gif) A.CreateReader(jpg) "
                                         "A.CreateReader(tif)"))
            expected += QVector<QString>(m_n, call).toList();
        QCOMPARE(m_calls.Take(), expected);

        for (const char* format : {"tif", "bmp", "png"})
            QCOMPARE(Manager()->AcquireReader(QLatin1String(format)), nullptr);
        QSet<OVImageFileReader*> jpegReaders;
        for (const char* format : {"jpeg", "JPG"}) {
            for (int i = 0; i < m_n; ++i) {
                jpegReaders << Manager()->AcquireReader(QLatin1String(format));
                QCOMPARE(Describe(*jpegReaders.begin()).left(3), QStringLiteral("A.r"));
            }
            for (OVImageFileReader* reader : qAsConst(jpegReaders))
                Manager()->ReleaseAcquiredReader(reader);
        }
        QCOMPARE(jpegReaders.size(), m_n);
        OVImageFileReader* tiff = Manager()->AcquireReader(QStringLiteral("tiff"));
        QCOMPARE(tiff->GetFormats(), QStringList{"tiff"});
        Manager()->ReleaseAcquiredReader(tiff);
        OVImageFileManager::ReleaseReadersPool();
        VerifyEachReaderReleasedOnce(a, m_calls);
    }

    void poolOutlivesAnotherPlugin()
    {
        // P0, unregistered and deleted, leaves its readers in the pool; P1's death leaves them there.
        FakeImagePlugin* p0 = Add(QStringLiteral("P0 aaa:r"));
        Add(QStringLiteral("P1 bbb:r"));
        OVImageFileManager::InitReadersPool();
        std::vector<std::unique_ptr<OVImageFileReader>> readers;
        for (OVTest::FakeReader* reader : p0->Readers())
            readers.emplace_back(reader)->setParent(nullptr);
        QVERIFY(Manager()->Unregister(p0));
        m_plugins.erase(m_plugins.begin());
        m_plugins.clear();
        QSemaphore lent;
        OVImageFileReader* reader = nullptr;
        std::thread borrower([&] {
            reader = Manager()->AcquireReader(QStringLiteral("aaa"));
            lent.release();
        });
        if (!lent.tryAcquire(1, 10000))
            qFatal("AcquireReader(\"aaa\") waits for ever");
        borrower.join();
        QCOMPARE(reader, readers.back().get());
        Manager()->ReleaseAcquiredReader(reader);
    }

    void poolLastInFirstOut()
    {
        FakeImagePlugin* a = Add(QStringLiteral("A jpg:r"));
        OVImageFileManager::InitReadersPool();
        const QString jpg = QStringLiteral("jpg");

        OVImageFileReader* first = Manager()->AcquireReader(jpg);
        QCOMPARE(first, a->Readers().last());
        // Returned twice, a reader is lent twice.
        Manager()->ReleaseAcquiredReader(first);
        Manager()->ReleaseAcquiredReader(first);
        QCOMPARE(Manager()->AcquireReader(jpg), first);
        QCOMPARE(Manager()->AcquireReader(jpg), first);
        Manager()->ReleaseAcquiredReader(first);
        Manager()->ReleaseAcquiredReader(first);
    }

    void releaseWaitsForBorrowedReader()
    {
        FakeImagePlugin* a = Add(QStringLiteral("A jpg:r"));
        OVImageFileManager::InitReadersPool();
        if (m_n < 2)
            QSKIP("Needs two readers per pool entry");

        // The worker holds the last reader made; taking out the first, which is idle, waits for
        // the worker's to come back, since it needs the whole entry idle.
        std::thread worker = HoldUntilWaitedFor(m_calls, QStringLiteral("jpg"));
        Manager()->ReleaseReader(a->Readers().first());
        worker.join();
        QCOMPARE(m_calls.Take(),
                 (QStringList{QStringLiteral("returned(A.r%1,jpg)").arg(m_n), "A.ReleaseReader(A.r1)"}));
    }

    void releasePoolAfterMisuse()
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
        std::thread worker = HoldUntilWaitedFor(m_calls, QStringLiteral("png"));
        OVImageFileManager::ReleaseReadersPool();
        worker.join();

        QStringList expected;
        for (int i = m_n; i > 0; --i)
            expected << "A.ReleaseReader(" + names.at(i - 1) + ')';
        expected << "returned(" + names.last() + ",png)";
        for (int i = 2 * m_n; i > m_n; --i)
            expected << "A.ReleaseReader(" + names.at(i - 1) + ')';
        QCOMPARE(m_calls.Take(), expected);
        QVERIFY(a->Readers().isEmpty());
    }

    void poolStress()
    {
        FakeImagePlugin* a = Add(QStringLiteral("A jpg:r png:r"));
        OVImageFileManager::InitReadersPool();
        OVTest::FakeReader::s_overlaps.storeRelaxed(0);
        std::atomic<int> failures{0};
        std::vector<std::thread> workers;
        for (int t = 0; t < 2 * m_n + 1; ++t) {
            workers.emplace_back([&, t] {
                const QString format = t % 2 ? QStringLiteral("JPG") : QStringLiteral("png");
                QImage image;
                for (int round = 0; round < 600; ++round) {
                    OVImageFileReader* reader = Manager()->AcquireReader(format);
                    if (!reader || !reader->GetFormats().contains(format.toLower()))
                        ++failures;
                    else
                        reader->Read(QString(), image);
                    Manager()->ReleaseAcquiredReader(reader);
                }
            });
        }
        for (std::thread& worker : workers)
            worker.join();
        // More borrowers than readers: some waited, and no reader was lent to two threads at once.
        QCOMPARE(failures.load(), 0);
        QCOMPARE(OVTest::FakeReader::s_overlaps.loadRelaxed(), 0);
        m_calls.Take();
        OVImageFileManager::ReleaseReadersPool();
        QCOMPARE(a->Readers().size(), 2 * m_n);
        VerifyEachReaderReleasedOnce(a, m_calls);
    }

    void hooks()
    {
        // Without hooks nothing opens or saves.
        bool flag = true;
        QVERIFY(!Manager()->Open(QStringLiteral("one"), &flag) && !flag);
        QVERIFY(!Manager()->Save(nullptr));
        // Hooks replace the ones installed before; the batch stops where the hook says.
        QStringList replaced, calls;
        Manager()->Register(&RecordOpen, &replaced);
        Manager()->Register(&RecordSave, &replaced);
        Manager()->Register(&RecordOpen, &calls);
        Manager()->Register(&RecordSave, &calls);
        flag = true;
        QVERIFY(Manager()->Open(QStringLiteral("one"), &flag) && flag);
        QVERIFY(Manager()->Open(QStringLiteral("one"), nullptr));
        Manager()->Open(QStringList{"a", "b", "c"});
        QVERIFY(Manager()->Save(reinterpret_cast<KXDocumentInterface*>(&calls)));
        QCOMPARE(calls, Words("open(one,flag) open(one,null) open(a,flag) open(b,flag) save(doc)"));
        QVERIFY(replaced.isEmpty());
        // Null clears them.
        Manager()->Register(OVImageFileManager::OpenHook(nullptr), &calls);
        QVERIFY(!Manager()->Open(QStringLiteral("one"), nullptr));
    }

private:
    FakeImagePlugin* Add(const QString& definition);

    std::vector<std::unique_ptr<FakeImagePlugin>> m_plugins;
    OVTest::CallLog m_calls;
    const int m_n = QThread::idealThreadCount();
};

FakeImagePlugin* TestImageFileIO::Add(const QString& definition)
{
    m_plugins.push_back(std::make_unique<FakeImagePlugin>(definition, &m_calls));
    Manager()->Register(m_plugins.back().get());
    return m_plugins.back().get();
}

OV_TEST_MAIN(TestImageFileIO)
#include "tst_imagefileio.moc"
