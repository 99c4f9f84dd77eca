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

    // Enters a new entry into the menu of role; false when the role is absent, its menu is
    // gone, the id is taken or there is nothing to enter. make() is called only once the
    // place is known to be free, with the role's menu as the parent.
    template <typename Entry, typename Make>
    Entry* EnterEntry(int role, int id, Make make);

private:
    void Insert(OVMenuItem* parent, int place, OVMenuItem entry);
};

template <typename Entry, typename Make>
Entry* OVMenuManagerPrivate::EnterEntry(int role, int id, Make make)
{
    OVMenuItem* parent = Child(role);
    if (!parent || !parent->menu)
        return nullptr;
    const int place = parent->InsertionPlace(id);
    if (place < 0)
        return nullptr;
    Entry* entry = make(parent->menu.data());
    if (!entry)
        return nullptr;
    OVMenuItem item;
    item.key = id;
    if constexpr (std::is_base_of_v<QMenu, Entry>)
        item.menu = entry;
    else
        item.action = entry;
    Insert(parent, place, std::move(item));
    return entry;
}
