#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>

class QAction;
class QMenu;
class QMenuBar;
class OVMenuManagerPrivate;

/// The editor's main menu bar, built together by the host and the plug-ins.
///
/// Top-level menus are keyed by a role, their entries (actions and submenus) by an integer
/// id; both keys are also the order in which menus and entries are shown, so every
/// contributor's entries land in the same place whatever order the plug-ins load in. The
/// manager owns neither menus nor actions: created ones belong to their parent menu
/// (top-level menus to the caller).
class OVCORE_EXPORT OVMenuManager : public QObject
{
    Q_OBJECT
public:
    /// The top-level menus, in left-to-right order on the menu bar. The gaps leave room for
    /// menus that a later version puts between these.
    enum MenuRole
    {
        File = 100,   ///< The File menu.
        Edit = 200,   ///< The Edit menu.
        Image = 300,  ///< The Image menu.
        Layer = 400,  ///< The Layer menu.
        Select = 500, ///< The Select menu.
        Filter = 600, ///< The Filter menu.
        View = 700,   ///< The View menu.
        Window = 800, ///< The Window menu.
        Help = 900    ///< The Help menu.
    };

    /// Creates the manager; a second call does nothing.
    static void InitInstance();
    /// The manager, or null before InitInstance() and after ReleaseInstance().
    static OVMenuManager* GetInstance();
    /// Deletes the manager; the menus stay with their owners.
    static void ReleaseInstance();

    /// A new top-level menu with no parent; null when the role is taken.
    static QMenu* CreateMenu(MenuRole role, const QString& title);
    /// Enters the caller's menu as the role's top-level menu, unless the role is taken.
    static void CreateMenu(MenuRole role, QMenu* menu);
    /// A new untitled submenu of the role's menu; null when the role is absent or id is taken.
    static QMenu* CreateMenu(MenuRole role, int id);
    /// Enters the caller's menu as the submenu \a id of the role's menu, unless the role is
    /// absent or id is taken.
    static void CreateMenu(MenuRole role, int id, QMenu* menu);
    /// A new action without text in the role's menu; null when the role is absent or id is taken.
    static QAction* CreateAction(MenuRole role, int id);
    /// Enters the caller's action as the entry \a id of the role's menu, unless the role is
    /// absent or id is taken.
    static void CreateAction(MenuRole role, int id, QAction* action);
    /// The action entered under (role, id); null for a submenu or an absent entry.
    static QAction* GetAction(MenuRole role, int id);
    /// Takes the entry out of its menu without deleting it; the id can then be used again.
    static void Take(MenuRole role, int id);
    /// Adds every top-level menu that exists now to \a bar, in role order.
    static void Setup(QMenuBar* bar);

private:
    OVMenuManager();
    ~OVMenuManager() override;
    Q_DISABLE_COPY(OVMenuManager)
    friend class OVMenuManagerPrivate;

    OVMenuManagerPrivate* const d;
};
