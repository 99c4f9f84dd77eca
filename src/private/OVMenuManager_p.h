#pragma once

#include <QAction>
#include <QMenu>
#include <QPointer>

#include <type_traits>
#include <vector>

// One node of the menu tree: a top-level menu (menu set), or an entry of one (either an
// action or a submenu). Children are kept in ascending key order. Menus and actions are only
// watched: one deleted by its owner reads as null and is passed over.
struct OVMenuItem
{
    QPointer<QMenu> menu;
    QPointer<QAction> action;
    int key = -1;
    bool enteredNull = false; // entered with a null action or submenu
    std::vector<OVMenuItem> children;

    // The action that stands for this item in its parent menu's widget.
    QAction* WidgetAction() const;
    // The child with the key, or null.
    OVMenuItem* Child(int key);
    // Where a child with the key goes: the index of the first child with a greater key (or
    // the end); -1 when the key is taken.
    int InsertionPlace(int key) const;
};

class OVMenuManagerPrivate : public OVMenuItem
{
public:
    // The tree of the instance, or null when there is none.
    static OVMenuManagerPrivate* Instance();
    // The top-level item of role in the instance's tree, or null.
    static OVMenuItem* RoleItem(int role);

    // Enters the menu make() gives as the instance's top-level menu of role; null when there is
    // no instance or the role is taken. make() is called only once the place is known to be
    // free.
    template <typename Make>
    static QMenu* EnterMenu(int role, Make make);
    // Enters the action or submenu make() gives into the menu of role; null when there is no
    // instance, the role is absent or its menu gone, or the id is taken.
    // make() is called only once the place is known to be free, with the role's menu.
    template <typename Entry, typename Make>
    static Entry* EnterEntry(int role, int id, Make make);

private:
    static void Insert(OVMenuItem* parent, int place, OVMenuItem entry);
};

template <typename Make>
QMenu* OVMenuManagerPrivate::EnterMenu(int role, Make make)
{
    OVMenuManagerPrivate* tree = Instance();
    const int place = tree ? tree->InsertionPlace(role) : -1;
    if (place < 0)
        return nullptr;
    // A null menu is entered too: its record holds the role until Take() erases it.
    QMenu* menu = make();
    OVMenuItem item;
    item.key = role;
    item.menu = menu;
    tree->children.insert(tree->children.begin() + place, std::move(item));
    return menu;
}

template <typename Entry, typename Make>
Entry* OVMenuManagerPrivate::EnterEntry(int role, int id, Make make)
{
    OVMenuItem* parent = RoleItem(role);
    // A role entered with a null menu (or whose menu its owner deleted) has no menu to hold
    // entries, so it takes none rather than dereference the missing menu.
    if (!parent || !parent->menu)
        return nullptr;
    const int place = parent->InsertionPlace(id);
    if (place < 0)
        return nullptr;
    // A null entry is entered too, holding its id until Take() erases it; the menu reports
    // the null action it is given.
    Entry* entry = make(parent->menu.data());
    OVMenuItem item;
    item.key = id;
    item.enteredNull = !entry;
    if constexpr (std::is_base_of_v<QMenu, Entry>)
        item.menu = entry;
    else
        item.action = entry;
    Insert(parent, place, std::move(item));
    return entry;
}
