// The menu manager: menus and entries contributed in any order end up in the same order in a
// real menu bar; taken keys, null, taken and deleted entries.

#include "OVApplication.h"
#include "OVMenuManager.h"
#include "OVTestSupport.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <memory>
#include <vector>

namespace {

using M = OVMenuManager;

// The bar as text: each menu's title, then its entries' texts in brackets, a submenu's
// text followed by "[]".
QString Describe(const QMenuBar& bar)
{
    QStringList menus;
    for (QAction* top : bar.actions()) {
        QStringList entries;
        for (QAction* entry : top->menu()->actions())
            entries << entry->text() + (entry->menu() ? "[]" : QString());
        menus << top->text() + '[' + entries.join(',') + ']';
    }
    return menus.join(',');
}

QAction* Named(QAction* action, int id)
{
    if (action)
        action->setText(QString::number(id));
    return action;
}

QMenu* Named(QMenu* menu, int id)
{
    return menu ? Named(menu->menuAction(), id)->menu() : nullptr;
}

} // namespace

class TestMenuManager : public QObject
{
    Q_OBJECT
private slots:
    // Contributors enter their menus first and their entries afterwards, neither in order; the
    // bar shows both in order.
    void contributionOrder()
    {
        M::InitInstance();
        QMenu filter("Filter"), callerMenu;
        QAction callerAction;
        std::unique_ptr<QMenu> help(M::CreateMenu(M::Help, "Help"));
        M::CreateMenu(M::Filter, &filter);
        std::unique_ptr<QMenu> file(M::CreateMenu(M::File, "File"));
        Named(M::CreateAction(M::Help, 1), 1);
        Named(M::CreateAction(M::File, 30), 30);
        Named(M::CreateMenu(M::Filter, 7), 7);
        M::CreateAction(M::File, 10, Named(&callerAction, 10));
        Named(M::CreateMenu(M::File, 20), 20);
        Named(M::CreateAction(M::File, -5), -5);
        Named(M::CreateAction(M::Filter, -7), -7);
        M::CreateMenu(M::File, 0, Named(&callerMenu, 0));

        QMenuBar bar;
        M::Setup(&bar);
        QCOMPARE(Describe(bar), "File[-5,0[],10,20[],30],Filter[-7,7[]],Help[1]");
        M::ReleaseInstance();
    }

    void keysAndEntries()
    {
        QVERIFY(!M::CreateMenu(M::File, "File"));
        M::InitInstance();
        std::unique_ptr<QMenu> file(M::CreateMenu(M::File, "File"));
        QMenu other("Other");
        // A taken role keeps its first menu; entries need their role and a free id.
        QVERIFY(!M::CreateMenu(M::File, "Again"));
        M::CreateMenu(M::File, &other);
        QVERIFY(!M::CreateAction(M::Edit, 1));
        QAction* one = Named(M::CreateAction(M::File, 1), 1);
        QCOMPARE(one->parent(), file.get());
        QVERIFY(!M::CreateAction(M::File, 1));
        QVERIFY(!M::CreateMenu(M::File, 1));
        QMenu* sub = Named(M::CreateMenu(M::File, 3), 3);
        QCOMPARE(sub->parent(), file.get());
        QCOMPARE(M::GetAction(M::File, 1), one);
        QVERIFY(!M::GetAction(M::File, 3));
        QCOMPARE(file->actions(), (QList<QAction*>{one, sub->menuAction()}));
        // A null entry holds its id (the menu warns of the null action) until it is taken.
        QTest::ignoreMessage(QtWarningMsg, "QWidget::insertAction: Attempt to insert null action");
        M::CreateAction(M::File, 2, nullptr);
        QVERIFY(!M::CreateAction(M::File, 2));
        M::Take(M::File, 2);
        QAction* two = Named(M::CreateAction(M::File, 2), 2);
        M::CreateMenu(M::Edit, static_cast<QMenu*>(nullptr));
        QVERIFY(!M::CreateMenu(M::Edit, "Edit"));
        // Taking an entry takes it out of the menu without deleting it and frees its id; the
        // next entry under that id goes back to the same place.
        M::Take(M::File, 1);
        M::Take(M::File, 42);
        QCOMPARE(file->actions(), (QList<QAction*>{two, sub->menuAction()}));
        QCOMPARE(one->parent(), file.get());
        QAction* again = Named(M::CreateAction(M::File, 1), 1);
        M::Take(M::File, 3);
        QCOMPARE(file->actions(), (QList<QAction*>{again, two}));
        // An entry deleted by its owner is passed over: the next entry goes before the first
        // following one that still exists.
        QAction* four = Named(M::CreateAction(M::File, 4), 4);
        QAction* six = Named(M::CreateAction(M::File, 6), 6);
        delete four;
        QAction* five = Named(M::CreateAction(M::File, 5), 5);
        QCOMPARE(file->actions().mid(2), (QList<QAction*>{five, six}));
        // An entry entered as null stands for a null action: one placed before it goes last.
        QTest::ignoreMessage(QtWarningMsg, "QWidget::insertAction: Attempt to insert null action");
        M::CreateAction(M::File, 8, nullptr);
        Named(M::CreateAction(M::File, 9), 9);
        Named(M::CreateAction(M::File, 7), 7);
        // The bar gets the menus that exist when it is set up, once.
        M::Setup(nullptr);
        QMenuBar bar;
        M::Setup(&bar);
        std::unique_ptr<QMenu> help(M::CreateMenu(M::Help, "Help"));
        QCOMPARE(Describe(bar), "File[1,2,5,6,9,7]");
        // Releasing the manager deletes no menu and no action.
        QPointer<QAction> watched(again);
        M::ReleaseInstance();
        QVERIFY(watched);
        QVERIFY(!M::GetAction(M::File, 1));
    }
};

OV_TEST_MAIN(TestMenuManager)
#include "tst_menumanager.moc"
