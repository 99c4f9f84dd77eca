// The image file registry: registration and its signals, queries, format groups, duplicate
// UIDs and the file-dialog filters.

#include "OVApplication.h"
#include "OVImageFileFixtures.h"
#include "OVImageFileManager.h"
#include "OVTestSupport.h"

#include <map>
#include <memory>

using OVTest::Describe;
using OVTest::FakeImagePlugin;

namespace {

const QString kAll = QString::fromLatin1(OVImageFileManager::AllGroupUID);

OVImageFileManager* Manager()
{
    return OVImageFileManager::GetInstance();
}

// The All group's UID is shown as "All", to keep the expectations readable.
QStringList Short(QStringList items)
{
    items.replaceInStrings(kAll, QStringLiteral("All"));
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
    QStringList lines{QStringLiteral("read: ") + m->GetSupportedReadFormats().join(' '),
                      QStringLiteral("write: ") + m->GetSupportedWriteFormats().join(' '),
                      QStringLiteral("read groups: ") + Short(readGroups).join(' '),
                      QStringLiteral("write groups: ") + Short(m->GetSupportedWriteGroups()).join(' ')};
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

} // namespace

class TestImageFileRegistry : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        OVImageFileManager::InitInstance();
        m_signals = std::make_unique<OVTest::SignalLog>();
        m_signals->Record(Manager(), &OVImageFileManager::SupportedGroupsChanged, QStringLiteral("groups"));
        m_signals->Record(Manager(), &OVImageFileManager::SupportedGroupChanged, QStringLiteral("group"));
    }

    void cleanup()
    {
        OVImageFileManager::ReleaseInstance();
        m_plugins.clear();
        m_calls.Take();
    }

    void scenarios_data()
    {
        QTest::addColumn<QStringList>("plugins");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("signalList");
        // What the queries say, then the read filter and the write filter.
        QTest::addColumn<QString>("state");

        const QString jpeg = QStringLiteral("A bmp:rw jpg:rw png:rw -jpeg:rw {J}JPEG=jpg,jpeg");
        QTest::newRow("read side, then write side; a group is named once")
            << QStringList{jpeg} << QStringList{"+A"}
            << OVTest::Words("group(All) groups() group({J}) group(All) group({J})")
            << "read: bmp jpg png|write: bmp jpg png|read groups: All {J}|write groups: {J}|{J} JPEG "
               "r=jpg,jpeg w=jpg,jpeg any=jpg,jpeg|JPG: r=A w=A|jpeg: r=null w=null|All (*.bmp *.jpg "
               "*.png);;JPEG (*.jpg *.jpeg)|JPEG (*.jpg *.jpeg)";
        QTest::newRow("one format, no group: no save filter")
            << QStringList{"A png:rw"} << QStringList{"+A"} << QStringList{"group(All)", "group(All)"}
            << "read: png|write: png|read groups: All|write groups: |png: r=A w=A|All (*.png)|";

        const QStringList twoOfPng{"A png:rw gif:r", "B png:r"};
        QTest::newRow("known formats: the later plug-in serves them, no signal")
            << twoOfPng << OVTest::Words("+A / +B") << QStringList{}
            << "read: gif png|write: png|read groups: All|write groups: |PNG: r=B w=A|All (*.gif *.png)|";
        QTest::newRow("the later plug-in goes: the earlier one serves again")
            << twoOfPng << OVTest::Words("+A +B / -B") << QStringList{}
            << "read: gif png|write: png|read groups: All|write groups: |png: r=A w=A|All (*.gif *.png)|";
        QTest::newRow("the earlier plug-in goes: the later one keeps serving")
            << twoOfPng << OVTest::Words("+A +B / -A") << QStringList{"group(All)", "group(All)"}
            << "read: png|write: |read groups: All|write groups: |png: r=B w=null|All (*.png)|";

        // Formats in ascending order; for each, the groups in ascending UID order.
        const QString grouped = QStringLiteral("A gif:r png:rw {G}Grp=png,gif");
        QTest::newRow("unregister: read side first, emptied groups stay")
            << QStringList{grouped} << OVTest::Words("+A / -A")
            << QStringList{"group(All)", "group({G})",               // read gif
                           "group(All)", "groups()",   "group({G})", // read png
                           "group(All)", "groups()",   "group({G})"} // write png
            << "read: |write: |read groups: All {G}|write groups: {G}|{G} Grp r= w= any=|png: r=null "
               "w=null|All );;Grp )|Grp )";
        QTest::newRow("plug-in destroyed: write side first")
            << QStringList{grouped} << OVTest::Words("+A / xA")
            << QStringList{"group(All)", "groups()",   "group({G})", // write png
                           "group(All)", "group({G})",               // read gif
                           "group(All)", "groups()",   "group({G})"} // read png
            << "read: |write: |read groups: All {G}|write groups: {G}|{G} Grp r= w= any=|All );;Grp )|Grp )";

        QTest::newRow("an emptied group filled again keeps its name")
            << QStringList{"A jpg:r {J}JPEG=jpg", "B jpg:r {J}Other=jpg"} << OVTest::Words("+A -A / +B")
            << QStringList{"group(All)", "group({J})"}
            << "read: jpg|write: |read groups: All {J}|write groups: |{J} JPEG r=jpg w= any=jpg|All "
               "(*.jpg);;JPEG (*.jpg)|";
        QTest::newRow("a group with no readable format exists on the write side only")
            << QStringList{"A raw:w {R}Raw=raw"} << QStringList{"+A"}
            << OVTest::Words("group(All) groups() group({R})")
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
            << toAll << QStringList{"+A"} << OVTest::Words("group(All) group(All)")
            << "read: png gif|write: |read groups: All|write groups: |All (*.png *.gif)|";
        QTest::newRow("a plug-in's own formats for the All group, then another plug-in")
            << toAll << OVTest::Words("+A +B") << OVTest::Words("group(All) group(All) group(All)")
            << "read: bmp gif png|write: |read groups: All|write groups: |All (*.bmp *.gif *.png)|";
        QTest::newRow("the All group stays sorted across plug-ins")
            << QStringList{"A tif:r bmp:r", "B png:r bmp:r ico:r"} << OVTest::Words("+A +B / xA")
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
        for (const QString& definition : plugins) {
            auto plugin = std::make_unique<FakeImagePlugin>(definition);
            m_plugins[plugin->objectName()] = std::move(plugin);
        }
        for (const QString& line : OVTest::Lines(state).filter(QStringLiteral(": r=")))
            probes << line.section(':', 0, 0);
        Run(steps);
        QTEST(Short(m_signals->Entries()), "signalList");
        QCOMPARE((Snapshot(probes) << OVImageFileManager::GetFilterForRead()
                                   << OVImageFileManager::GetFilterForWrite())
                     .join('|'),
                 state);
    }

    void pluginCalls()
    {
        // The plug-in's answers and the registry's signals, in one list.
        connect(Manager(), &OVImageFileManager::SupportedGroupsChanged, this,
                [this] { m_calls.Add("groups()"); });
        connect(Manager(), &OVImageFileManager::SupportedGroupChanged, this,
                [this](const QString& group) { m_calls.Add("group(" + Short({group}).first() + ")"); });
        FakeImagePlugin plugin(QStringLiteral("A png:rw raw:w {G}Grp=png,raw r@R w@W"), &m_calls);
        QVERIFY(!Manager()->Register(nullptr));
        QVERIFY(!Manager()->Unregister(&plugin));
        QCOMPARE(Manager()->GetGroupName(QStringLiteral("{nope}")), QStringLiteral("Unknown"));
        QVERIFY(Manager()->Register(&plugin));
        // Each side asks the same; the read side names the group, the write side finds it named.
        const QString side =
            "A.GetFormats() A.GetFormatCapabilities(png) A.GetFormatCapabilities(raw) group(All) "
            "A.GetGroups() A.GetGroupFormats({G}) A.GetFormatCapabilities(png) "
            "A.GetFormatCapabilities(raw) ";
        QCOMPARE(m_calls.Take(), OVTest::Words("A.GetReaderUIDs() " + side +
                                               "A.GetGroupName({G}) groups() group({G}) "
                                               "A.GetWriterUIDs() " +
                                               side + "group({G})"));

        // A second registration leaves everything as it is; taking the plug-in out asks it nothing.
        QVERIFY(Manager()->Register(&plugin));
        QVERIFY(Manager()->Unregister(&plugin));
        QVERIFY(!Manager()->Unregister(&plugin));
        // The signals of reading png, then of writing png and raw.
        QCOMPARE(m_calls.Take(),
                 OVTest::Words(
                     "group(All) groups() group({G}) group(All) group({G}) group(All) groups() group({G})"));
    }

    void duplicateUIDs()
    {
        FakeImagePlugin first(QStringLiteral("A png:rw r@R1 w@W1"), &m_calls);
        FakeImagePlugin second(QStringLiteral("B png:rw r@R1 r@R2 w@W1"), &m_calls);
        OVTest::LogCapture log;
        QVERIFY(Manager()->Register(&first));
        QVERIFY(Manager()->Register(&second));

        const QStringList lines = log.Matching(QStringLiteral("Build date="));
        const QString file = QStringLiteral("src\\private\\OVImageFileManager_p.cpp");
        QCOMPARE(lines.filter(OVTest::BuildLogLine(file, "R1 uid is not unique.", 521)) +
                     lines.filter(OVTest::BuildLogLine(file, "W1 uid is not unique.", 285)),
                 lines);

        // A UID stays with the plug-in that registered it first, and goes with it.
        m_calls.Take();
        QCOMPARE(Describe(Manager()->CreateReaderByUID(QStringLiteral("R1"))), QStringLiteral("A.r1"));
        QCOMPARE(Describe(Manager()->CreateReaderByUID(QStringLiteral("R2"))), QStringLiteral("B.r1"));
        QCOMPARE(Describe(Manager()->CreateWriterByUID(QStringLiteral("W1"))), QStringLiteral("A.w1"));
        QCOMPARE(Manager()->CreateReaderByUID(QStringLiteral("r1")), nullptr);
        QVERIFY(Manager()->Unregister(&first));
        QCOMPARE(Manager()->CreateReaderByUID(QStringLiteral("R1")), nullptr);
        QCOMPARE(m_calls.Take(),
                 OVTest::Words("A.CreateReaderByUID(R1) B.CreateReaderByUID(R2) A.CreateWriterByUID(W1)"));
    }

private:
    // Runs "+A" (register), "-A" (unregister), "xA" (delete) and "/" (forget the signals so far).
    void Run(const QStringList& steps);

    std::map<QString, std::unique_ptr<FakeImagePlugin>> m_plugins;
    OVTest::CallLog m_calls;
    std::unique_ptr<OVTest::SignalLog> m_signals;
};

void TestImageFileRegistry::Run(const QStringList& steps)
{
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
}

OV_TEST_MAIN(TestImageFileRegistry)
#include "tst_imagefileregistry.moc"
