// The tool-bar and tool-widget content managers: every case runs against both, which differ only
// in what happens to the keyboard focus of a content that is switched away from.

#include "OVApplication.h"
#include "OVTestSupport.h"
#include "OVToolBarManager.h"
#include "OVToolWidgetManager.h"
#include "private/OVToolContent_p.h"

#include <QLineEdit>
#include <QPointer>
#include <QVBoxLayout>

namespace {

// The static operations of one manager.
struct Manager
{
    void (*init)();
    void (*release)();
    bool (*add)(QWidget*, const QString&);
    void (*activate)(QWidget*);
    void (*remove)(QWidget*);
    QWidget* (*general)();
    bool (*empty)();
    QString (*currentUID)();
    // The UID a content is registered under, read from the registry itself.
    QString (*uidOf)(QWidget*);
    // Records each ContentChanged() as "changed(<empty or shown>,<general widget's title>)",
    // read when the signal arrives.
    void (*record)(OVTest::SignalLog&);
};

template <typename M>
Manager Bind()
{
    return {&M::InitInstance,
            &M::ReleaseInstance,
            &M::Add,
            &M::Activate,
            &M::Remove,
            &M::GeneralContent,
            &M::IsGeneralContentEmpty,
            &M::CurrentUID,
            [](QWidget* content) { return OVToolContentPrivate::Of(M::GetInstance())->uids.value(content); },
            [](OVTest::SignalLog& log) {
                QObject::connect(M::GetInstance(), &M::ContentChanged, &log, [&log] {
                    const QWidget* general = M::GeneralContent();
                    log.Append(QStringLiteral("changed(%1,%2)")
                                   .arg(M::IsGeneralContentEmpty() ? QStringLiteral("empty")
                                                                   : QStringLiteral("shown"),
                                        general ? general->windowTitle() : QStringLiteral("-")));
                });
            }};
}

const Manager kManagers[] = {Bind<OVToolBarManager>(), Bind<OVToolWidgetManager>()};

// The manager of the current data row, created.
const Manager& Started()
{
    QFETCH_GLOBAL(int, manager);
    kManagers[manager].init();
    return kManagers[manager];
}

// A content widget with a title, not yet added.
QWidget* Content(const QString& name)
{
    auto* content = new QWidget;
    content->setObjectName(name);
    content->setWindowTitle(QStringLiteral("Title ") + name);
    return content;
}

} // namespace

class TestToolContent : public QObject
{
    Q_OBJECT

private slots:
    // Every test runs once per manager.
    void initTestCase_data()
    {
        QTest::addColumn<int>("manager");
        QTest::addColumn<bool>("clearsFocus");
        QTest::newRow("toolbar") << 0 << true;
        QTest::newRow("toolwidget") << 1 << false;
    }

    void cleanup()
    {
        OVToolBarManager::ReleaseInstance();
        OVToolWidgetManager::ReleaseInstance();
    }

    void noInstance()
    {
        QFETCH_GLOBAL(int, manager);
        QWidget content;
        QVERIFY(!kManagers[manager].add(&content, QStringLiteral("a")));
        QVERIFY(kManagers[manager].empty() && !kManagers[manager].general() && !content.parent());
    }

    void add()
    {
        const Manager& m = Started();
        OVTest::SignalLog log;
        m.record(log);
        QWidget* general = m.general();
        QSizePolicy preferred(QSizePolicy::Preferred, QSizePolicy::Preferred);
        preferred.setRetainSizeWhenHidden(false);

        QWidget* a = Content(QStringLiteral("A"));
        QWidget* b = Content(QStringLiteral("B"));
        a->setSizePolicy(QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding));
        QVERIFY(m.add(a, QStringLiteral("uid-a")));
        QVERIFY(m.add(b, QStringLiteral("uid-b")));
        QVERIFY(!m.add(a, QStringLiteral("other")));
        QCOMPARE(m.uidOf(a), QStringLiteral("uid-a"));

        QCOMPARE(a->parentWidget(), general);
        QCOMPARE(a->sizePolicy(), preferred);
        QCOMPARE(general->layout()->indexOf(b), 1);
        QVERIFY(a->isHidden());
        QVERIFY(m.empty());
        QCOMPARE(log.Take(), QStringList());
    }

    void switching()
    {
        const Manager& m = Started();
        OVTest::SignalLog log;
        m.record(log);
        QWidget* general = m.general();
        general->show();
        QList<QWidget*> contents{Content("A"), Content("B"), Content("C")};
        for (QWidget* content : contents)
            m.add(content, QStringLiteral("uid-") + content->objectName());
        QWidget* a = contents.at(0);
        QWidget* b = contents.at(1);
        QWidget unknown;
        // Each step adds the names of the contents shown after it to the signal log.
        const auto step = [&](const char* what) {
            QStringList shown;
            for (QWidget* child : general->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
                shown << (child->isVisible() ? child->objectName() : QString());
            log.Append(QLatin1String(what) + QStringLiteral(" shown=") + shown.join(QString()));
        };

        m.activate(a);
        step("A");
        // The shown content again, and a widget that was never added: nothing happens.
        m.activate(a);
        m.activate(&unknown);
        step("A again, unknown");
        m.activate(b);
        step("B");
        // Null hides the shown content and keeps the title.
        m.activate(nullptr);
        m.activate(nullptr);
        step("null twice");
        // A hidden content leaves quietly; it stays alive and a child of the general widget, and
        // cannot be shown any more.
        m.activate(a);
        m.remove(b);
        m.activate(b);
        step("B removed");
        QCOMPARE(b->parentWidget(), general);
        // The shown content leaves: nothing is shown and the title is emptied; removed contents
        // are no longer followed; deleting the shown content works as removing it.
        m.remove(a);
        delete a;
        delete b;
        step("A removed");
        m.activate(contents.at(2));
        delete contents.at(2);
        step("C deleted");
        QCOMPARE(log.Take(),
                 OVTest::Lines("changed(shown,Title A)|A shown=A|A again, unknown shown=A|"
                               "changed(shown,Title B)|B shown=B|changed(empty,Title B)|null twice shown=|"
                               "changed(shown,Title A)|B removed shown=A|changed(empty,)|A removed shown=|"
                               "changed(shown,Title C)|changed(empty,)|C deleted shown="));
        QCOMPARE(m.currentUID(), QString());
        QCOMPARE(unknown.parent(), nullptr);
        QCOMPARE(general->layout()->count(), 0);
    }

    void release()
    {
        const Manager& m = Started();
        OVTest::SignalLog log;
        m.record(log);
        QPointer<QWidget> general = m.general();
        QPointer<QWidget> shown = Content(QStringLiteral("A"));
        QPointer<QWidget> hidden = Content(QStringLiteral("B"));
        QPointer<QWidget> removed = Content(QStringLiteral("C"));
        QPointer<QWidget> moved = Content(QStringLiteral("D"));
        QWidget elsewhere;
        for (QWidget* content : {shown.data(), hidden.data(), removed.data(), moved.data()})
            m.add(content, content->objectName());
        m.remove(removed);
        moved->setParent(&elsewhere);
        m.activate(shown);
        log.Clear();

        // The general widget takes its children along, removed or not, and nobody is told.
        m.release();
        QVERIFY(general.isNull() && shown.isNull() && hidden.isNull() && removed.isNull() && moved);
        QCOMPARE(log.Take(), QStringList());

        // The host's window may delete the general widget first; the manager then holds nothing.
        m.init();
        m.record(log);
        auto* host = new QWidget;
        (new QVBoxLayout(host))->addWidget(m.general());
        m.add(moved, QStringLiteral("uid-d"));
        m.activate(moved);
        log.Clear();
        delete host;
        QVERIFY(moved.isNull() && !m.general() && m.empty());
        QCOMPARE(log.Take(), QStringList{QStringLiteral("changed(empty,)")});
        QVERIFY(!m.add(&elsewhere, QStringLiteral("uid-e")));
        m.release();
    }

    // A line edit of content A holds the focus; switching to B, and switching to nothing, either
    // clears it or leaves it alone.
    void focus()
    {
        QFETCH_GLOBAL(bool, clearsFocus);
        const Manager& m = Started();
        QWidget* general = m.general();
        QWidget* a = Content(QStringLiteral("A"));
        auto* edit = new QLineEdit(a);
        QWidget* b = Content(QStringLiteral("B"));
        m.add(a, QStringLiteral("uid-a"));
        m.add(b, QStringLiteral("uid-b"));
        general->show();
        QApplication::setActiveWindow(general);
        for (QWidget* next : {b, static_cast<QWidget*>(nullptr)}) {
            m.activate(a);
            edit->setFocus();
            QVERIFY(edit->hasFocus());

            m.activate(next);
            QVERIFY(a->isHidden());
            QCOMPARE(edit->hasFocus(), !clearsFocus);
            QCOMPARE(a->focusWidget(), clearsFocus ? nullptr : edit);
        }
    }
};

OV_TEST_MAIN(TestToolContent)

#include "tst_toolcontent.moc"
