// The image file registry: registration and its signals, queries, format groups, duplicate UIDs,
// the file-dialog filters, readers and writers, the readers pool under many threads and under
// misuse, and the open and save hooks.

#include "OVApplication.h"
#include "OVImageFileFixtures.h"
#include "OVImageFileManager.h"
#include "OVTestSupport.h"
#include "private/OVReadersPool_p.h"

#include <atomic>
#include <map>
#include <memory>
#include <thread>
#include <vector>

using OVTest::Describe;
using OVTest::FakeImagePlugin;
using OVTest::Words;

namespace {

const QString kAll = QString::fromLatin1(OVImageFileManager::AllGroupUID);

OVImageFileManager* Manager()
{
    return OVImageFileManager::GetInstance();
}

// The All group's UID is shown as "All", to keep the expectations readable.
QStringList Short(QStringList items)
{
    items.replaceInStrings(kAll, "All");
    return items;
}

// Everything the queries say: formats, groups with names and lists, and which plug-in
// serves each probed format.
QStringList Snapshot(const QStringList& probes)
{
    const OVImageFileManager* m = Manager();
    const QStringList readGroups = m->GetSupportedReadGroups();
    QStringList groups = readGroups + m->GetSupportedWriteGroups();
    groups.removeDuplicates();
    groups.removeOne(kAll);
    QStringList lines{"read: " + m->GetSupportedReadFormats().join(' '),
                      "write: " + m->GetSupportedWriteFormats().join(' '),
                      "read groups: " + Short(readGroups).join(' '),
                      "write groups: " + Short(m->GetSupportedWriteGroups()).join(' ')};
    for (const QString& group : groups) {
        lines << QStringLiteral("%1 %2 r=%3 w=%4 any=%5")
                     .arg(group, m->GetGroupName(group), m->GetGroupReadFormats(group).join(','),
                          m->GetGroupWriteFormats(group).join(','), m->GetGroupFormats(group).join(','));
    }
    for (const QString& probe : probes) {
        lines << QStringLiteral("%1: r=%2 w=%3")
                     .arg(probe, Describe(m->GetPluginForRead(probe)), Describe(m->GetPluginForWrite(probe)));
    }
    return lines;
}

// Every reader the plug-ins made against every reader they got back, both sorted.
void VerifyEachReaderReleasedOnce(const FakeImagePlugin* plugin, OVTest::CallLog& calls)
{
    QStringList made;
    for (const OVTest::FakeReader* reader : plugin->Readers())
        made << plugin->objectName() + ".ReleaseReader(" + reader->objectName() + ')';
    QStringList released = calls.Take().filter(".ReleaseReader(");
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
    if (flag && path == "b")
        *flag = false;
    return true;
}

bool RecordSave(KXDocumentInterface* document, void* data)
{
    *static_cast<QStringList*>(data) << QStringLiteral("save(%1)").arg(document ? "doc" : "null");
    return true;
}

} // namespace

class TestImageFileRegistry : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        OVImageFileManager::InitInstance();
        m_signals = std::make_unique<OVTest::SignalLog>();
        m_signals->Record(Manager(), &OVImageFileManager::SupportedGroupsChanged, "groups");
        m_signals->Record(Manager(), &OVImageFileManager::SupportedGroupChanged, "group");
    }

    void cleanup()
    {
        OVReadersPool::drainWaits = nullptr;
        OVImageFileManager::ReleaseReadersPool();
        OVImageFileManager::ReleaseInstance();
        m_plugins.clear();
        m_calls.Take();
    }

    void scenarios_data()
    {
        // What the queries say, then the read filter and the write filter.
        OVTest::Columns<QStringList, QStringList, QStringList, QString>(
            {"plugins", "steps", "signalList", "state"});
        const QString jpeg = "A bmp:rw jpg:rw png:rw -jpeg:rw {J}JPEG=jpg,jpeg";
        QTest::newRow("read side, then write side; a group is named once")
            << QStringList{jpeg} << QStringList{"+A"}
            << Words("group(All) groups() group({J}) group(All) group({J})")
            << "read: bmp jpg png|write: bmp jpg png|read groups: All {J}|write groups: {J}|{J} JPEG "
               "r=jpg,jpeg w=jpg,jpeg any=jpg,jpeg|JPG: r=A w=A|jpeg: r=null w=null|All (*.bmp *.jpg "
               "*.png);;JPEG (*.jpg *.jpeg)|JPEG (*.jpg *.jpeg)";
        QTest::newRow("one format, no group: no save filter")
            << QStringList{"A png:rw"} << QStringList{"+A"} << QStringList{"group(All)", "group(All)"}
            << "read: png|write: png|read groups: All|write groups: |png: r=A w=A|All (*.png)|";

        const QStringList twoOfPng{"A png:rw gif:r", "B png:r"};
        QTest::newRow("known formats: the later plug-in serves them, no signal")
            << twoOfPng << Words("+A / +B") << QStringList{}
            << "read: gif png|write: png|read groups: All|write groups: |PNG: r=B w=A|All (*.gif *.png)|";
        QTest::newRow("the later plug-in goes: the earlier one serves again")
            << twoOfPng << Words("+A +B / -B") << QStringList{}
            << "read: gif png|write: png|read groups: All|write groups: |png: r=A w=A|All (*.gif *.png)|";
        QTest::newRow("the earlier plug-in goes: the later one keeps serving")
            << twoOfPng << Words("+A +B / -A") << QStringList{"group(All)", "group(All)"}
            << "read: png|write: |read groups: All|write groups: |png: r=B w=null|All (*.png)|";
        // Formats in ascending order; for each, the groups in ascending UID order.
        const QString grouped = "A gif:r png:rw {G}Grp=png,gif";
        QTest::newRow("unregister: read side first, emptied groups stay")
            << QStringList{grouped} << Words("+A / -A")
            << QStringList{"group(All)", "group({G})",               // read gif
                           "group(All)", "groups()",   "group({G})", // read png
                           "group(All)", "groups()",   "group({G})"} // write png
            << "read: |write: |read groups: All {G}|write groups: {G}|{G} Grp r= w= any=|png: r=null "
               "w=null|All );;Grp )|Grp )";
        QTest::newRow("plug-in destroyed: write side first")
            << QStringList{grouped} << Words("+A / xA")
            << QStringList{"group(All)", "groups()",   "group({G})", // write png
                           "group(All)", "group({G})",               // read gif
                           "group(All)", "groups()",   "group({G})"} // read png
            << "read: |write: |read groups: All {G}|write groups: {G}|{G} Grp r= w= any=|All );;Grp )|Grp )";

        QTest::newRow("an emptied group filled again keeps its name")
            << QStringList{"A jpg:r {J}JPEG=jpg", "B jpg:r {J}Other=jpg"} << Words("+A -A / +B")
            << QStringList{"group(All)", "group({J})"}
            << "read: jpg|write: |read groups: All {J}|write groups: |{J} JPEG r=jpg w= any=jpg|All "
               "(*.jpg);;JPEG (*.jpg)|";
        QTest::newRow("a group with no readable format exists on the write side only")
            << QStringList{"A raw:w {R}Raw=raw"} << QStringList{"+A"}
            << Words("group(All) groups() group({R})")
            << "read: |write: raw|read groups: |write groups: {R}|{R} Raw r= w=raw any=raw||Raw (*.raw)";
        QTest::newRow("upper-case formats are kept but never found")
            << QStringList{"A JPG:r"} << QStringList{"+A"} << QStringList{"group(All)"}
            << "read: JPG|write: |read groups: All|write groups: |jpg: r=null w=null|JPG: r=null "
               "w=null|All (*.JPG)|";
        // A plug-in may add to the All group as to any group: unsorted, until a registration
        // adds a new format to it.
        const QStringList toAll{"A png:r -gif:r {00000000-0000-0000-0000-000000000001}Mine=gif,png",
                                "B bmp:r"};
        QTest::newRow("a plug-in's own formats for the All group")
            << toAll << QStringList{"+A"} << Words("group(All) group(All)")
            << "read: png gif|write: |read groups: All|write groups: |All (*.png *.gif)|";
        QTest::newRow("a plug-in's own formats for the All group, then another plug-in")
            << toAll << Words("+A +B") << Words("group(All) group(All) group(All)")
            << "read: bmp gif png|write: |read groups: All|write groups: |All (*.bmp *.gif *.png)|";
        QTest::newRow("the All group stays sorted across plug-ins")
            << QStringList{"A tif:r bmp:r", "B png:r bmp:r ico:r"} << Words("+A +B / xA")
            << QStringList{"group(All)"}
            << "read: bmp ico png|write: |read groups: All|write groups: |bmp: r=B w=null|All (*.bmp *.ico "
               "*.png)|";
    }
    void scenarios()
    {
        QFETCH(QStringList, plugins);
        QFETCH(QStringList, steps);
        QFETCH(QString, state);
        QStringList probes;
        for (const QString& definition : plugins)
            Add(definition, false);
        for (const QString& line : OVTest::Lines(state).filter(": r="))
            probes << line.section(':', 0, 0);
        // "+A" registers A, "-A" unregisters it, "xA" deletes it and "/" forgets the signals so far.
        for (const QString& step : steps) {
            FakeImagePlugin* plugin = step.size() > 1 ? m_plugins.at(step.mid(1)).get() : nullptr;
            if (step.startsWith('+'))
                QVERIFY(Manager()->Register(plugin));
            else if (step.startsWith('-'))
                QVERIFY(Manager()->Unregister(plugin));
            else if (step.startsWith('x'))
                m_plugins.erase(step.mid(1));
            else
                m_signals->Clear();
        }
        QTEST(Short(m_signals->Entries()), "signalList");
        const QStringList filters{OVImageFileManager::GetFilterForRead(),
                                  OVImageFileManager::GetFilterForWrite()};
        QCOMPARE((Snapshot(probes) + filters).join('|'), state);
    }

    void registration()
    {
        FakeImagePlugin plugin("A png:rw raw:w {G}Grp=png,raw", &m_calls);
        QVERIFY(!Manager()->Register(nullptr));
        QVERIFY(!Manager()->Unregister(&plugin));
        QCOMPARE(Manager()->GetGroupName("{nope}"), "Unknown");
        QVERIFY(Manager()->Register(&plugin));
        // Both sides know the group; only the first asks for its name.
        QCOMPARE(m_calls.Take().filter("GetGroupName"), QStringList{"A.GetGroupName({G})"});
        m_signals->Clear();
        // A second registration changes nothing; taking the plug-in out asks it nothing.
        QVERIFY(Manager()->Register(&plugin));
        QCOMPARE(m_signals->Take(), QStringList());
        QVERIFY(Manager()->Unregister(&plugin));
        QVERIFY(!Manager()->Unregister(&plugin));
        QCOMPARE(m_calls.Take(), QStringList());
        QCOMPARE(Manager()->GetPluginForWrite("raw"), nullptr);
    }

    void duplicateUIDs()
    {
        FakeImagePlugin first("A png:rw r@R1 w@W1", &m_calls);
        FakeImagePlugin second("B png:rw r@R1 r@R2 w@W1", &m_calls);
        OVTest::LogCapture log;
        QVERIFY(Manager()->Register(&first));
        QVERIFY(Manager()->Register(&second));

        const QStringList lines = log.Matching("Build date=");
        const QString file = "src\\private\\OVImageFileManager_p.cpp";
        QCOMPARE(lines.filter(OVTest::BuildLogLine(file, "R1 uid is not unique.", 521)) +
                     lines.filter(OVTest::BuildLogLine(file, "W1 uid is not unique.", 285)),
                 lines);
        // A UID stays with the plug-in that registered it first, and goes with it.
        m_calls.Take();
        QCOMPARE(Describe(Manager()->CreateReaderByUID("R1")), "A.r1");
        QCOMPARE(Describe(Manager()->CreateReaderByUID("R2")), "B.r1");
        QCOMPARE(Describe(Manager()->CreateWriterByUID("W1")), "A.w1");
        QCOMPARE(Manager()->CreateReaderByUID("r1"), nullptr);
        QVERIFY(Manager()->Unregister(&first));
        QCOMPARE(Manager()->CreateReaderByUID("R1"), nullptr);
        QCOMPARE(m_calls.Take(),
                 Words("A.CreateReaderByUID(R1) B.CreateReaderByUID(R2) A.CreateWriterByUID(W1)"));
    }

    void createAndRelease()
    {
        FakeImagePlugin* a = Add("A png:rw jpg:r r@RA w@WA");
        Add("B png:r r@RB");
        Add("N gif:rw r@RN w@WN null");
        m_calls.Take();

        OVImageFileReader* fromB = Manager()->CreateReader("PNG");
        OVImageFileReader* byUID = Manager()->CreateReaderByUID("RA");
        OVImageFileWriter* writer = Manager()->CreateWriter("Png");
        OVImageFileWriter* writerByUID = Manager()->CreateWriterByUID("WA");
        QCOMPARE(Describe(fromB) + Describe(byUID) + Describe(writer) + Describe(writerByUID),
                 "B.r1A.r1A.w1A.w2");
        // Unknown formats and UIDs ask no plug-in; a plug-in that makes nothing gives null.
        QCOMPARE(Manager()->CreateReader("tif"), nullptr);
        QCOMPARE(Manager()->CreateWriter("jpg"), nullptr);
        QCOMPARE(Manager()->CreateReader("gif"), nullptr);
        QCOMPARE(Manager()->CreateWriterByUID("WN"), nullptr);
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
        Add("A png:rw");
        FakeImagePlugin* b = Add("B jpg:rw");
        // A reader destroyed by someone else is forgotten.
        delete Manager()->CreateReader("png");
        // A plug-in destroyed while registered takes its live objects out of the registry: the
        // one that outlives it is not handed back to anybody afterwards.
        std::unique_ptr<OVImageFileReader> survivor(Manager()->CreateReader("png"));
        survivor->setParent(nullptr);
        QVERIFY(Manager()->CreateWriter("png"));
        // A plug-in unregistered and then destroyed cannot be handed anything either.
        std::unique_ptr<OVImageFileReader> stray(Manager()->CreateReader("jpg"));
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
        FakeImagePlugin* a = Add("A gif:r jpg:r tif:r png:w jpg>jpg,jpeg tif>tiff");
        Add("N bmp:r null");
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
                QCOMPARE(Describe(*jpegReaders.begin()).left(3), "A.r");
            }
            for (OVImageFileReader* reader : qAsConst(jpegReaders))
                Manager()->ReleaseAcquiredReader(reader);
        }
        QCOMPARE(jpegReaders.size(), m_n);
        OVImageFileReader* tiff = Manager()->AcquireReader("tiff");
        QCOMPARE(tiff->GetFormats(), QStringList{"tiff"});
        Manager()->ReleaseAcquiredReader(tiff);
        OVImageFileManager::ReleaseReadersPool();
        VerifyEachReaderReleasedOnce(a, m_calls);
    }

    void poolOutlivesAnotherPlugin()
    {
        // P0, unregistered and deleted, leaves its readers in the pool; P1's death leaves them there.
        FakeImagePlugin* p0 = Add("P0 aaa:r");
        Add("P1 bbb:r");
        OVImageFileManager::InitReadersPool();
        std::vector<std::unique_ptr<OVImageFileReader>> readers;
        for (OVTest::FakeReader* reader : p0->Readers())
            readers.emplace_back(reader)->setParent(nullptr);
        QVERIFY(Manager()->Unregister(p0));
        m_plugins.erase("P0");
        m_plugins.clear();
        QSemaphore lent;
        OVImageFileReader* reader = nullptr;
        std::thread borrower([&] {
            reader = Manager()->AcquireReader("aaa");
            lent.release();
        });
        if (!lent.tryAcquire(1, 10000))
            qFatal("AcquireReader(\"aaa\") waits for ever");
        borrower.join();
        QCOMPARE(reader, readers.back().get());
        Manager()->ReleaseAcquiredReader(reader);
    }

    void releaseWaitsForBorrowedReader()
    {
        FakeImagePlugin* a = Add("A jpg:r");
        OVImageFileManager::InitReadersPool();
        if (m_n < 2)
            QSKIP("Needs two readers per pool entry");
        // The worker holds the last reader made; taking out the first, which is idle, waits for
        // the worker's to come back, since it needs the whole entry idle.
        std::thread worker = HoldUntilWaitedFor(m_calls, "jpg");
        Manager()->ReleaseReader(a->Readers().first());
        worker.join();
        QCOMPARE(m_calls.Take(),
                 (QStringList{QStringLiteral("returned(A.r%1,jpg)").arg(m_n), "A.ReleaseReader(A.r1)"}));
    }

    void releasePoolAfterMisuse()
    {
        // A plug-in that deletes the readers it gets back, and readers returned more often than
        // they were lent: each reader still goes back once, and not while a worker holds it.
        FakeImagePlugin* a = Add("A jpg:r png:r disposes");
        OVImageFileManager::InitReadersPool();
        QStringList names;
        for (const OVTest::FakeReader* reader : a->Readers())
            names << reader->objectName();
        for (const QString format : {"jpg", "png"}) {
            // The last reader made is lent first; returned twice, it is lent twice.
            OVImageFileReader* reader = Manager()->AcquireReader(format);
            QCOMPARE(reader->objectName(), names.at(format == "jpg" ? m_n - 1 : 2 * m_n - 1));
            for (int i = 0; i < 2; ++i)
                Manager()->ReleaseAcquiredReader(reader);
            QCOMPARE(Manager()->AcquireReader(format), reader);
            QCOMPARE(Manager()->AcquireReader(format), reader);
            for (int i = 0; i < 2; ++i)
                Manager()->ReleaseAcquiredReader(reader);
        }
        // The worker borrows png's top reader while a second copy of it stays idle.
        std::thread worker = HoldUntilWaitedFor(m_calls, "png");
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
        FakeImagePlugin* a = Add("A jpg:r png:r");
        OVImageFileManager::InitReadersPool();
        OVTest::FakeReader::s_overlaps.storeRelaxed(0);
        std::atomic<int> failures{0};
        std::vector<std::thread> workers;
        for (int t = 0; t < 2 * m_n + 1; ++t) {
            workers.emplace_back([&, t] {
                const QString format = t % 2 ? "JPG" : "png";
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
        QVERIFY(!Manager()->Open("one", &flag) && !flag);
        QVERIFY(!Manager()->Save(nullptr));
        // Hooks replace the ones installed before; the batch stops where the hook says.
        QStringList replaced, calls;
        Manager()->Register(&RecordOpen, &replaced);
        Manager()->Register(&RecordSave, &replaced);
        Manager()->Register(&RecordOpen, &calls);
        Manager()->Register(&RecordSave, &calls);
        flag = true;
        QVERIFY(Manager()->Open("one", &flag) && flag);
        QVERIFY(Manager()->Open("one", nullptr));
        Manager()->Open(QStringList{"a", "b", "c"});
        QVERIFY(Manager()->Save(reinterpret_cast<KXDocumentInterface*>(&calls)));
        QCOMPARE(calls, Words("open(one,flag) open(one,null) open(a,flag) open(b,flag) save(doc)"));
        QVERIFY(replaced.isEmpty());
        // Null clears them.
        Manager()->Register(OVImageFileManager::OpenHook(nullptr), &calls);
        QVERIFY(!Manager()->Open("one", nullptr));
    }

private:
    // A plug-in of the given definition, kept until the test ends, and registered unless told not.
    FakeImagePlugin* Add(const QString& definition, bool registered = true)
    {
        auto plugin = std::make_unique<FakeImagePlugin>(definition, &m_calls);
        if (registered)
            Manager()->Register(plugin.get());
        return (m_plugins[plugin->objectName()] = std::move(plugin)).get();
    }

    std::map<QString, std::unique_ptr<FakeImagePlugin>> m_plugins;
    OVTest::CallLog m_calls;
    std::unique_ptr<OVTest::SignalLog> m_signals;
    const int m_n = QThread::idealThreadCount();
};

OV_TEST_MAIN(TestImageFileRegistry)
#include "tst_imagefileregistry.moc"
