// The adjustment and brush tool registries: registration and its signals, refused duplicate
// identifiers, items deleted while registered, receivers that call back in, registration
// from many threads, and the main brush plug-in.

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"
#include "OVApplication.h"
#include "OVBrushPlugin.h"
#include "OVBrushToolManager.h"
#include "OVTestSupport.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

// A plug-in object of type Base that reports uid and is shown in signal logs by name.
template <typename Base>
class Identified : public Base
{
public:
    Identified(const QString& name, const QString& uid)
        : m_uid(uid)
    {
        Base::setObjectName(name);
    }
    QString GetUID() const override { return m_uid; }

private:
    const QString m_uid;
};

class TestAdjustment : public Identified<OVAdjustment>
{
public:
    using Identified::Identified;
    QImage Apply(const QImage& image, const QVariantMap&) const override { return image; }
};

using Item = Identified<OVBrushPlugin>;
using Manager = OVBrushToolManager;

OVBrushPlugin* Lookup(const QString& id)
{
    return Manager::GetInstance()->GetPlugin(id);
}

// The one build-log line a refused registration wrote, with its place and words.
void CheckRefusal(const OVTest::LogCapture& capture, const char* file, const char* text, int line)
{
    const QStringList lines = capture.Matching("Build date=");
    QCOMPARE(lines.size(), 1);
    QVERIFY2(OVTest::BuildLogLine(file, text, line).match(lines[0]).hasMatch(), qPrintable(lines[0]));
}

} // namespace

class TestItemRegistry : public QObject
{
    Q_OBJECT
private slots:
    void init() { Manager::InitInstance(); }
    void cleanup() { Manager::ReleaseInstance(); }
    // The two registries are one piece of code: the cases run against the brushes' registry, and
    // the adjustments' shows that its refusal names its own place and words.
    void adjustmentRefusal()
    {
        OVAdjustmentManager::InitInstance();
        TestAdjustment first("a1", "X"), second("a2", "X");
        OVTest::LogCapture capture;
        QVERIFY(OVAdjustmentManager::GetInstance()->Register(&first));
        QVERIFY(!OVAdjustmentManager::GetInstance()->Register(&second));
        QCOMPARE(OVAdjustmentManager::GetInstance()->GetAdjustment("X"), &first);
        CheckRefusal(capture, "src\\OVAdjustmentManager.cpp",
                     "id:X already registered.Tool is not registered.", 117);
        OVAdjustmentManager::ReleaseInstance();
    }

    void mainBrush()
    {
        Manager* manager = Manager::GetInstance();
        auto a = std::make_unique<Item>("a", "A"), b = std::make_unique<Item>("b", "B"),
             c = std::make_unique<Item>("c", "C");
        // The main brush plug-in is forgotten when destroyed, not when unregistered; one set twice,
        // replaced or cleared is no longer watched.
        manager->SetMainBrushPlugin(a.get());
        manager->SetMainBrushPlugin(a.get());
        manager->SetMainBrushPlugin(b.get());
        a.reset();
        QVERIFY(manager->Register(b.get()) && manager->Unregister("B"));
        QCOMPARE(manager->GetMainBrushPlugin(), b.get());
        manager->SetMainBrushPlugin(nullptr);
        manager->SetMainBrushPlugin(c.get());
        b.reset();
        QCOMPARE(manager->GetMainBrushPlugin(), c.get());
        c.reset();
        QVERIFY(!manager->GetMainBrushPlugin());
    }

    void registration()
    {
        Manager* manager = Manager::GetInstance();
        OVTest::SignalLog log;
        log.Record(manager, &Manager::Registred, "+");
        log.Record(manager, &Manager::Unregistred, "-");
        OVTest::LogCapture capture;

        Item x1("x1", "X"), x2("x2", "X"), b2("b2", "B");
        auto b1 = std::make_unique<Item>("b1", "B");
        // A null item and a repeated registration succeed without changing anything; a second
        // object with a held identifier is refused and logged.
        QVERIFY(manager->Register(nullptr));
        QVERIFY(manager->Register(&x1));
        QVERIFY(manager->Register(&x1));
        QVERIFY(manager->Register(b1.get()));
        QVERIFY(!manager->Register(&x2));
        QCOMPARE(Lookup("X"), &x1);
        QCOMPARE(manager->GetID(b1.get()), "B");
        QVERIFY(manager->GetID(&x2).isNull());
        QCOMPARE(manager->GetRegistered(), (QStringList{"X", "B"}));
        CheckRefusal(capture, "src\\OVBrushToolManager.cpp",
                     "id:X already registered.Tool will not register.", 116);
        // Unregistering keeps the order of the rest and frees the identifier.
        QVERIFY(!manager->Unregister("Y"));
        QVERIFY(manager->Unregister("X"));
        QVERIFY(manager->Register(&x2));
        QCOMPARE(manager->GetRegistered(), (QStringList{"B", "X"}));
        // An item deleted while registered no longer holds its identifier; the next object
        // that reports it takes the entry over in place.
        b1.reset();
        QVERIFY(!Lookup("B"));
        QVERIFY(manager->Register(&b2));
        QCOMPARE(Lookup("B"), &b2);
        QCOMPARE(manager->GetRegistered(), (QStringList{"B", "X"}));
        // While an item is being destroyed it is still known by the pointer that was registered:
        // a receiver of its destroyed() forgets it under its identifier.
        auto d = std::make_unique<Item>("d", "D");
        Item* dying = d.get();
        QVERIFY(manager->Register(dying));
        connect(dying, &QObject::destroyed, manager,
                [manager, dying] { QVERIFY(manager->Unregister(manager->GetID(dying))); });
        d.reset();
        // Receivers may call back into the registry: this one takes every newcomer out again.
        Item t("t", "T");
        const QMetaObject::Connection reentrant =
            connect(manager, &Manager::Registred, manager, [manager](const QString& id) {
                QVERIFY(manager->GetRegistered().contains(id));
                QVERIFY(manager->Unregister(id));
            });
        QVERIFY(manager->Register(&t));
        disconnect(reentrant);
        QCOMPARE(manager->GetRegistered(), (QStringList{"B", "X"}));

        QCOMPARE(log.Take(),
                 (OVTest::Words("+(X,x1) +(B,b1) -(X,x1) +(X,x2) +(B,b2) +(D,d) -(D,d) +(T,t) -(T,t)")));
        // The registry owns nothing.
        QPointer<Item> survivor(&x2);
        Manager::ReleaseInstance();
        QVERIFY(survivor);
    }

    // Several threads register at once, each its own objects, which report the same identifiers
    // as the other threads' objects. Receivers on the registering thread and on the GUI thread
    // each see one Registred per success.
    void concurrency()
    {
        constexpr int threads = 4;
        constexpr int perThread = 150;
        Manager* manager = Manager::GetInstance();
        OVTest::LogCapture capture;

        std::vector<std::unique_ptr<Item>> items;
        for (int t = 0; t < threads; ++t)
            for (int i = 0; i < perThread; ++i)
                items.push_back(
                    std::make_unique<Item>(QStringLiteral("%1/%2").arg(t).arg(i), QString::number(i)));

        std::atomic<int> direct{0};
        int queued = 0;
        connect(
            manager, &Manager::Registred, manager, [&direct] { ++direct; }, Qt::DirectConnection);
        QObject guiReceiver;
        connect(manager, &Manager::Registred, &guiReceiver, [&queued] { ++queued; });

        std::atomic<int> successes{0};
        std::vector<std::thread> workers;
        for (int t = 0; t < threads; ++t)
            workers.emplace_back([&, t] {
                for (int i = 0; i < perThread; ++i) {
                    Item* item = items[static_cast<size_t>(t * perThread + i)].get();
                    if (manager->Register(item))
                        ++successes;
                    Lookup(item->GetUID());
                }
            });
        for (std::thread& worker : workers)
            worker.join();

        const int expected = perThread;
        QCOMPARE(successes.load(), expected);
        QCOMPARE(direct.load(), expected);
        QTRY_COMPARE(queued, expected);
        QCOMPARE(capture.Matching("already registered").size(), threads * perThread - expected);
        // Every identifier is held by one object that reports it.
        const QStringList registered = manager->GetRegistered();
        QCOMPARE(registered.size(), expected);
        for (const QString& id : registered)
            QCOMPARE(manager->GetID(Lookup(id)), id);
    }
};

OV_TEST_MAIN(TestItemRegistry)
#include "tst_itemregistry.moc"
