#include "private/OVMenuManager_p.h"

#include "OVMenuManager.h"

QAction* OVMenuItem::WidgetAction() const
{
    if (action)
        return action;
    return menu ? menu->menuAction() : nullptr;
}

OVMenuItem* OVMenuItem::Child(int key)
{
    for (OVMenuItem& child : children) {
        if (child.key == key)
            return &child;
    }
    return nullptr;
}

int OVMenuItem::InsertionPlace(int key) const
{
    for (size_t i = 0; i < children.size(); ++i) {
        if (children[i].key == key)
            return -1;
        if (children[i].key > key)
            return static_cast<int>(i);
    }
    return static_cast<int>(children.size());
}

void OVMenuManagerPrivate::Insert(OVMenuItem* parent, int place, OVMenuItem entry)
{
    // The entry's widget action goes before the action of the entry that follows it; one
    // entered as null stands for a null action, before which insertAction() appends. An entry
    // deleted by its owner is passed over for the next one, rather than hand the menu a
    // pointer to a freed action.
    QAction* before = nullptr;
    for (size_t i = static_cast<size_t>(place); i < parent->children.size() && !before; ++i) {
        if (parent->children[i].enteredNull)
            break;
        before = parent->children[i].WidgetAction();
    }
    parent->menu->insertAction(before, entry.WidgetAction());
    parent->children.insert(parent->children.begin() + place, std::move(entry));
}

OVMenuManagerPrivate* OVMenuManagerPrivate::Instance()
{
    OVMenuManager* manager = OVMenuManager::GetInstance();
    return manager ? manager->d : nullptr;
}

OVMenuItem* OVMenuManagerPrivate::RoleItem(int role)
{
    OVMenuManagerPrivate* tree = Instance();
    return tree ? tree->Child(role) : nullptr;
}
