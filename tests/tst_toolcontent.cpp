// The tool-bar and tool-widget content managers, which share their code: the cases run against the
// tool bar's, and the focus of a content switched away from, where they differ, against both.

#include "OVApplication.h"
#include "OVTestSupport.h"
#include "OVToolBarManager.h"
#include "OVToolWidgetManager.h"

#include <QLineEdit>
#include <QVBoxLayout>

namespace {

using M = OVToolBarManager;

// Makes the tool bar's manager and records each ContentChanged() as "changed(<empty or
// shown>,<general widget's title>)", read when the signal arrives.
void Start(OVTest::SignalLog& log)
{
    M::InitInstance();
    QObject::connect(M::GetInstance(), &M::ContentChanged, &log, [&log] {
        const QWidget* general = M::GeneralContent();
        log.Append(
            QStringLiteral("changed(%1,%2)")
                .arg(M::IsGeneralContentEmpty() ? "empty" : "shown", general ? general->windowTitle() : "-"));
    });
}

// A content widget with a title, not yet added.
QWidget* Content(const QString& name)
{
    auto* content = new QWidget;
    content->setObjectName(name);
    content->setWindowTitle("Title " + name);
    return content;
}

// A line edit of content A holds the focus; switching to B, and switching to nothing, either
// clears it or leaves it alone.
template <typename Manager>
void CheckFocus(bool clearsFocus)
{
    Manager::InitInstance();
    QWidget* general = Manager::GeneralContent();
    QWidget* a = Content("A");
    auto* edit = new QLineEdit(a);
    QWidget* b = Content("B");
    Manager::Add(a, "uid-a");
    Manager::Add(b, "uid-b");
    general->show();
    QApplication::setActiveWindow(general);
    for (QWidget* next : {b, static_cast<QWidget*>(nullptr)}) {
        Manager::Activate(a);
        edit->setFocus();
        QVERIFY(edit->hasFocus());
        Manager::Activate(next);
        QVERIFY(a->isHidden());
        QCOMPARE(edit->hasFocus(), !clearsFocus);
        QCOMPARE(a->focusWidget(), clearsFocus ? nullptr : edit);
    }
    Manager::ReleaseInstance();
}

} // namespace

class TestToolContent : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { M::ReleaseInstance(); }

    void noInstance()
    {
        QWidget content;
        QVERIFY(!M::Add(&content, "a") && !OVToolWidgetManager::Add(&content, "a"));
        QVERIFY(M::IsGeneralContentEmpty() && !M::GeneralContent() && !content.parent());
    }

    void add()
    {
        OVTest::SignalLog log;
        Start(log);
        QWidget* general = M::GeneralContent();
        QWidget *a = Content("A"), *b = Content("B");
        const QSizePolicy fixed(QSizePolicy::Fixed, QSizePolicy::Expanding);
        QSizePolicy preferred(QSizePolicy::Preferred, QSizePolicy::Preferred);
        preferred.setRetainSizeWhenHidden(false);
        a->setSizePolicy(fixed);
        QVERIFY(M::Add(a, "uid-a") && M::Add(b, "uid-b"));
        QCOMPARE(a->parentWidget(), general);
        QCOMPARE(a->sizePolicy(), preferred);
        QCOMPARE(general->layout()->indexOf(b), 1);
        QVERIFY(a->isHidden() && M::IsGeneralContentEmpty());
        QCOMPARE(log.Take(), QStringList());
        // Added again, a content stays as it is: shown, in its place, with the policy it has now,
        // and followed once.
        M::Activate(a);
        a->setSizePolicy(fixed);
        QVERIFY(!M::Add(a, "other"));
        QVERIFY(!a->isHidden());
        QCOMPARE(a->sizePolicy(), fixed);
        QCOMPARE(general->layout()->count(), 2);
        QCOMPARE(general->layout()->indexOf(a), 0);
        delete a;
        QCOMPARE(log.Take(), OVTest::Lines("changed(shown,Title A)|changed(empty,)"));
    }

    void switching()
    {
        OVTest::SignalLog log;
        Start(log);
        QWidget* general = M::GeneralContent();
        general->show();
        QWidget *a = Content("A"), *b = Content("B");
        QVERIFY(M::Add(a, "uid-a") && M::Add(b, "uid-b"));
        QWidget unknown;
        // Each step adds the names of the contents shown after it to the signal log.
        const auto step = [&](const char* what) {
            QStringList shown;
            for (QWidget* child : general->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
                shown << (child->isVisible() ? child->objectName() : QString());
            log.Append(QLatin1String(what) + " shown=" + shown.join(QString()));
        };

        M::Activate(a);
        step("A");
        // The shown content again, and a widget that was never added: nothing happens.
        M::Activate(a);
        M::Activate(&unknown);
        step("A again, unknown");
        M::Activate(b);
        step("B");
        // Null hides the shown content and keeps the title.
        M::Activate(nullptr);
        M::Activate(nullptr);
        step("null twice");
        // A hidden content leaves quietly; it stays alive and a child of the general widget, and
        // cannot be shown any more.
        M::Activate(a);
        M::Remove(b);
        M::Activate(b);
        step("B removed");
        QCOMPARE(b->parentWidget(), general);
        // The shown content leaves: nothing is shown and the title is emptied; removed contents
        // are no longer followed.
        M::Remove(a);
        delete a;
        delete b;
        step("A removed");
        QCOMPARE(log.Take(),
                 OVTest::Lines("changed(shown,Title A)|A shown=A|A again, unknown shown=A|"
                               "changed(shown,Title B)|B shown=B|changed(empty,Title B)|null twice shown=|"
                               "changed(shown,Title A)|B removed shown=A|changed(empty,)|A removed shown="));
        QCOMPARE(M::CurrentUID(), QString());
        QCOMPARE(unknown.parent(), nullptr);
        QCOMPARE(general->layout()->count(), 0);
    }

    void release()
    {
        OVTest::SignalLog log;
        Start(log);
        QPointer<QWidget> general = M::GeneralContent(), shown = Content("A"), hidden = Content("B"),
                          removed = Content("C"), moved = Content("D");
        QWidget elsewhere;
        for (QWidget* content : {shown.data(), hidden.data(), removed.data(), moved.data()})
            M::Add(content, content->objectName());
        M::Remove(removed);
        moved->setParent(&elsewhere);
        M::Activate(shown);
        log.Clear();
        // The general widget takes its children along, removed or not, and nobody is told.
        M::ReleaseInstance();
        QVERIFY(general.isNull() && shown.isNull() && hidden.isNull() && removed.isNull() && moved);
        QCOMPARE(log.Take(), QStringList());
        // The host's window may delete the general widget first; the manager then holds nothing.
        Start(log);
        auto* host = new QWidget;
        (new QVBoxLayout(host))->addWidget(M::GeneralContent());
        M::Add(moved, "uid-d");
        M::Activate(moved);
        log.Clear();
        delete host;
        QVERIFY(moved.isNull() && !M::GeneralContent() && M::IsGeneralContentEmpty());
        QCOMPARE(log.Take(), QStringList{"changed(empty,)"});
        QVERIFY(!M::Add(&elsewhere, "uid-e"));
        M::ReleaseInstance();
    }

    void focus()
    {
        CheckFocus<OVToolBarManager>(true);
        CheckFocus<OVToolWidgetManager>(false);
    }
};

OV_TEST_MAIN(TestToolContent)

#include "tst_toolcontent.moc"
