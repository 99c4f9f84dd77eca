#include "OVMenuManager.h"

#include "private/OVMenuManager_p.h"
#include "private/OVSingleton_p.h"

#include <QMenuBar>

OV_DEFINE_SINGLETON(OVMenuManager)

OVMenuManager::OVMenuManager()
    : d(new OVMenuManagerPrivate)
{}

OVMenuManager::~OVMenuManager()
{
    delete d;
}

QMenu* OVMenuManager::CreateMenu(MenuRole role, const QString& title)
{
    return OVMenuManagerPrivate::EnterMenu(role, [&title] { return new QMenu(title); });
}

void OVMenuManager::CreateMenu(MenuRole role, QMenu* menu)
{
    OVMenuManagerPrivate::EnterMenu(role, [menu] { return menu; });
}

QMenu* OVMenuManager::CreateMenu(MenuRole role, int id)
{
    return OVMenuManagerPrivate::EnterEntry<QMenu>(role, id, [](QMenu* parent) { return new QMenu(parent); });
}

void OVMenuManager::CreateMenu(MenuRole role, int id, QMenu* menu)
{
    OVMenuManagerPrivate::EnterEntry<QMenu>(role, id, [menu](QMenu*) { return menu; });
}

QAction* OVMenuManager::CreateAction(MenuRole role, int id)
{
    return OVMenuManagerPrivate::EnterEntry<QAction>(role, id,
                                                     [](QMenu* parent) { return new QAction(parent); });
}

void OVMenuManager::CreateAction(MenuRole role, int id, QAction* action)
{
    OVMenuManagerPrivate::EnterEntry<QAction>(role, id, [action](QMenu*) { return action; });
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
