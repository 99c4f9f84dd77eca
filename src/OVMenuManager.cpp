#include "OVMenuManager.h"

#include "private/OVMenuManager_p.h"
#include "private/OVSingleton_p.h"

#include <QMenuBar>

OV_DEFINE_SINGLETON(OVMenuManager)

namespace {

// Enters a top-level menu made by make() under role; null when there is no instance, the
// role is taken or make() gives nothing.
template <typename Make>
QMenu* EnterTopLevel(OVMenuManagerPrivate* tree, OVMenuManager::MenuRole role, Make make)
{
    if (!tree)
        return nullptr;
    const int place = tree->InsertionPlace(role);
    if (place < 0)
        return nullptr;
    QMenu* menu = make();
    if (!menu)
        return nullptr;
    OVMenuItem item;
    item.key = role;
    item.menu = menu;
    tree->children.insert(tree->children.begin() + place, std::move(item));
    return menu;
}

} // namespace

OVMenuManager::OVMenuManager()
    : d(new OVMenuManagerPrivate)
{}

OVMenuManager::~OVMenuManager()
{
    delete d;
}

QMenu* OVMenuManager::CreateMenu(MenuRole role, const QString& title)
{
    return EnterTopLevel(OVMenuManagerPrivate::Instance(), role, [&title] { return new QMenu(title); });
}

void OVMenuManager::CreateMenu(MenuRole role, QMenu* menu)
{
    EnterTopLevel(OVMenuManagerPrivate::Instance(), role, [menu] { return menu; });
}

QMenu* OVMenuManager::CreateMenu(MenuRole role, int id)
{
    OVMenuManagerPrivate* tree = OVMenuManagerPrivate::Instance();
    return tree ? tree->EnterEntry<QMenu>(role, id, [](QMenu* parent) { return new QMenu(parent); })
                : nullptr;
}

void OVMenuManager::CreateMenu(MenuRole role, int id, QMenu* menu)
{
    if (OVMenuManagerPrivate* tree = OVMenuManagerPrivate::Instance())
        tree->EnterEntry<QMenu>(role, id, [menu](QMenu*) { return menu; });
}

QAction* OVMenuManager::CreateAction(MenuRole role, int id)
{
    OVMenuManagerPrivate* tree = OVMenuManagerPrivate::Instance();
    return tree ? tree->EnterEntry<QAction>(role, id, [](QMenu* parent) { return new QAction(parent); })
                : nullptr;
}

void OVMenuManager::CreateAction(MenuRole role, int id, QAction* action)
{
    if (OVMenuManagerPrivate* tree = OVMenuManagerPrivate::Instance())
        tree->EnterEntry<QAction>(role, id, [action](QMenu*) { return action; });
}

QAction* OVMenuManager::GetAction(MenuRole role, int id)
{
    OVMenuItem* menu = OVMenuManagerPrivate::RoleItem(role);
    OVMenuItem* entry = menu ? menu->Child(id) : nullptr;
    return entry ? entry->action.data() : nullptr;
}

void OVMenuManager::Take(MenuRole role, int id)
{
    OVMenuItem* menu = OVMenuManagerPrivate::RoleItem(role);
    if (!menu)
        return;
    for (auto it = menu->children.begin(); it != menu->children.end(); ++it) {
        if (it->key != id)
            continue;
        QAction* action = it->WidgetAction();
        if (action && menu->menu)
            menu->menu->removeAction(action);
        menu->children.erase(it);
        return;
    }
}

void OVMenuManager::Setup(QMenuBar* bar)
{
    OVMenuManagerPrivate* tree = OVMenuManagerPrivate::Instance();
    if (!bar || !tree)
        return;
    for (const OVMenuItem& item : tree->children) {
        if (item.menu)
            bar->addMenu(item.menu);
    }
}
