// Tool actions and the tool group: the two checked states of an action, and how the group
// keeps one chosen tool and one tool in effect while its members change.

#include "OVActivateAction.h"
#include "OVApplication.h"
#include "OVTestSupport.h"
#include "OVToolGroupManager.h"

namespace {

// An action that can be made to refuse changes through its own IsAllowChange().
class LockableAction : public OVActivateAction
{
    Q_OBJECT
public:
    using OVActivateAction::OVActivateAction;
    bool IsAllowChange() override { return !locked && OVActivateAction::IsAllowChange(); }
    Q_INVOKABLE void Lock() { locked = true; }

    bool locked = false;
};

// A row: the set-up steps, the steps, the signals the steps emit, and the state after them.
void Row(const char* name, const QString& setup, const char* steps, const char* emitted, const char* state)
{
    QTest::newRow(name) << OVTest::Words(setup) << OVTest::Words(steps) << OVTest::Words(emitted)
                        << QString::fromLatin1(state);
}

} // namespace

class TestToolGroup : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        OVToolGroupManager::InitInstance();
        // S stays outside the group; the others are its members.
        for (const QString name : {"A", "B", "E", "T", "X", "S"}) {
            auto* action = new LockableAction;
            action->setObjectName(name);
            m_log.Record(action, &OVActivateAction::ImplicitToggled, name + ".Implicit");
            m_log.Record(action, &OVActivateAction::Toggled, name + ".Toggled");
            if (name != "S")
                OVToolGroupManager::Add(action, "uid-" + name);
            m_actions << action;
        }
        m_log.Clear();
    }

    void cleanup()
    {
        for (const QPointer<LockableAction>& action : qAsConst(m_actions))
            delete action.data();
        m_actions.clear();
        OVToolGroupManager::ReleaseInstance();
    }

    void transitions_data()
    {
        OVTest::Columns<QStringList, QStringList, QStringList, QString>(
            {"setup", "steps", "emitted", "state"});
        const char* const checkedS = "explicit=- implicit=- checked=S implied=S";
        Row("uncheck", "S.SetChecked(true)", "S.SetChecked(false)", "S.Implicit(false) S.Toggled(false)",
            "explicit=- implicit=- checked= implied=");
        // Refused changes emit nothing; only the check after AllowChange() is heard (a plain check).
        Row("not allowed", "S.AllowChange(false)",
            "S.SetChecked(true) S.SetImplicitChecked(true) S.Toggle() S.ImplicitToggle() S.AllowChange() "
            "S.SetChecked(true)",
            "S.Implicit(true) S.Toggled(true)", checkedS);
        Row("refused by subclass", "S.SetChecked(true) S.Lock()", "S.SetChecked(false) S.ImplicitToggle()",
            "", checkedS);

        const char* const onlyB = "explicit=B implicit=B checked=B implied=B";
        const char* const onlyE = "explicit=E implicit=E checked=E implied=E";
        const char* const nothing = "explicit=- implicit=- checked= implied=";
        // Set-ups: A chosen; E chosen with T in effect for a while.
        const QString chosenA = "A.SetChecked(true) ";
        const QString temporaryT = "E.SetChecked(true) T.SetImplicitChecked(true) ";
        // Activation.
        Row("activate from empty", "", "Activate(B)", "B.Implicit(true) B.Toggled(true) Activate(B)=true",
            onlyB);
        Row("activate over chosen", chosenA, "Activate(B)",
            "A.Implicit(false) A.Toggled(false) B.Implicit(true) B.Toggled(true) Activate(B)=true", onlyB);
        // The chosen tool takes the implicit state back quietly; only the group misses it.
        Row("activate over temporary", temporaryT, "Activate(B)",
            "T.Implicit(false) E.Implicit(true) E.Implicit(false) E.Toggled(false) B.Implicit(true) "
            "B.Toggled(true) Activate(B)=true",
            onlyB);
        Row("activate chosen", chosenA, "Activate(A)", "Activate(A)=true",
            "explicit=A implicit=A checked=A implied=A");
        Row("activate with temporary only", "T.SetImplicitChecked(true)", "Activate(X)",
            "T.Implicit(false) Activate(X)=true", nothing);
        Row("chosen refuses", chosenA + "A.Lock()", "Activate(B)", "Activate(B)=false",
            "explicit=A implicit=A checked=A implied=A");
        Row("temporary refuses", temporaryT + "T.Lock()", "Activate(B)", "Activate(B)=false",
            "explicit=E implicit=T checked=E implied=T");
        // Members changing their own states.
        Row("temporary over chosen", chosenA, "T.SetImplicitChecked(true)",
            "T.Implicit(true) A.Implicit(false)", "explicit=A implicit=T checked=A implied=T");
        Row("temporary ends", temporaryT, "T.SetImplicitChecked(false)", "T.Implicit(false) E.Implicit(true)",
            onlyE);
        Row("chosen unchecked under temporary", temporaryT, "E.SetChecked(false)", "E.Toggled(false)",
            "explicit=- implicit=T checked= implied=T");
        // Checking a member directly does not uncheck the chosen one.
        Row("member checked", chosenA, "B.SetChecked(true)",
            "B.Implicit(true) A.Implicit(false) B.Toggled(true)",
            "explicit=B implicit=B checked=A,B implied=B");
        // Members leaving; a removed member keeps its flags.
        Row("remove temporary", temporaryT, "Remove(T) T.SetImplicitChecked(false)",
            "E.Implicit(true) T.Implicit(false)", onlyE);
        Row("delete chosen", chosenA, "delete(A)", "", nothing);
        Row("delete temporary", temporaryT, "delete(T)", "E.Implicit(true)", onlyE);
    }
    void transitions()
    {
        QFETCH(QStringList, setup);
        QFETCH(QStringList, steps);
        for (const QString& step : setup + QStringList{"clear"} + steps)
            Run(step);
        QTEST(m_log.Take(), "emitted");
        QTEST(State(), "state");
    }

    void membership()
    {
        // Adding again keeps the first UID.
        OVToolGroupManager::Add(Action("A"), "other");
        QVERIFY(OVToolGroupManager::Activate(Action("A")));
        QCOMPARE(OVToolGroupManager::GetExplicitToolUID(), "uid-A");
        // A checked action that may change is left out: the group does not follow it.
        OVActivateAction outsider;
        outsider.SetChecked(true);
        OVToolGroupManager::Add(&outsider, "uid-O");
        outsider.SetChecked(false);
        outsider.SetChecked(true);
        QCOMPARE(OVToolGroupManager::GetExplicitAction(), Action("A"));
        // A checked action that refuses change is taken in as it is.
        auto* fixed = new LockableAction;
        fixed->SetChecked(true);
        fixed->locked = true;
        OVToolGroupManager::Add(fixed, "uid-F");
        QVERIFY(fixed->IsChecked());
        QCOMPARE(OVToolGroupManager::GetExplicitAction(), Action("A"));
        fixed->locked = false;
        fixed->SetChecked(false);
        fixed->SetChecked(true);
        QCOMPARE(OVToolGroupManager::GetExplicitAction(), fixed);
        QCOMPARE(OVToolGroupManager::GetExplicitToolUID(), "uid-F");
        // A deleted explicit member leaves no explicit action and no UID.
        delete fixed;
        QCOMPARE(OVToolGroupManager::GetExplicitAction(), nullptr);
        QCOMPARE(OVToolGroupManager::GetExplicitToolUID(), QString());
        OVToolGroupManager::Add(nullptr, "uid-N");
        OVToolGroupManager::Remove(&outsider);
        QVERIFY(!OVToolGroupManager::Activate(nullptr));
    }

private:
    LockableAction* Action(const QString& name) const
    {
        for (const QPointer<LockableAction>& action : m_actions)
            if (action && action->objectName() == name)
                return action;
        return nullptr;
    }

    // Runs "X.Slot(arg)", "Activate(X)", "Remove(X)", "delete(X)" or "clear" (the signals so far);
    // Activate's result is logged as "Activate(X)=result".
    void Run(const QString& step)
    {
        static const QRegularExpression call(QStringLiteral(R"(^(?:(\w)\.)?(\w+)\((\w*)\)$)"));
        const QRegularExpressionMatch match = call.match(step);
        const QString target = match.captured(1);
        const QByteArray method = match.captured(2).toLatin1();
        const QString argument = match.captured(3);
        if (step == "clear") {
            m_log.Clear();
        } else if (method == "delete") {
            delete Action(argument);
        } else if (target.isEmpty() && method == "Activate") {
            m_log.Append(step + '=' + OVTest::Describe(OVToolGroupManager::Activate(Action(argument))));
        } else if (target.isEmpty() && method == "Remove") {
            OVToolGroupManager::Remove(Action(argument));
        } else if (argument.isEmpty()) {
            QVERIFY2(QMetaObject::invokeMethod(Action(target), method.constData()), qPrintable(step));
        } else {
            const bool value = argument == "true";
            QVERIFY2(QMetaObject::invokeMethod(Action(target), method.constData(), Q_ARG(bool, value)),
                     qPrintable(step));
        }
    }

    // "explicit=E implicit=E checked=E implied=E,T": the group's two actions and the names of the
    // actions whose explicit and implicit flags are set.
    QString State() const
    {
        const auto name = [](const QObject* object) { return object ? object->objectName() : "-"; };
        QStringList checked, implied;
        for (const QPointer<LockableAction>& action : m_actions) {
            if (action && action->IsChecked())
                checked << action->objectName();
            if (action && action->IsImplicitlyChecked())
                implied << action->objectName();
        }
        return QStringLiteral("explicit=%1 implicit=%2 checked=%3 implied=%4")
            .arg(name(OVToolGroupManager::GetExplicitAction()), name(OVToolGroupManager::GetImplicitAction()),
                 checked.join(','), implied.join(','));
    }

    QList<QPointer<LockableAction>> m_actions;
    OVTest::SignalLog m_log;
};

OV_TEST_MAIN(TestToolGroup)
#include "tst_toolgroup.moc"
