#pragma once

#include "OVMenuManager.h"
#include "OVPluginContainer.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

class OVAdjustment;
class OVPlugin;
class QAction;

// The root object of a sample plug-in library. A library derives from it, makes its objects in
// Setup() with the helpers below, and gets them all taken back in Release(): menu entries out
// of their menus, adjustments out of the registry, objects deleted last made first, so that
// nothing the library's code drives outlives the library.
class OVSampleContainer : public QObject, public OVPluginContainer
{
    Q_OBJECT
    Q_INTERFACES(OVPluginContainer)
public:
    ~OVSampleContainer() override;

    void Initialize() override;
    void Release() override;
    // Sets the menu entries' texts in the language the host has loaded by now.
    void UIReady() override;
    void GetPlugins(QList<OVPlugin*>& plugins) override;

protected:
    virtual void Setup() = 0;

    // A plug-in object offered through GetPlugins(); the container deletes it on Release().
    void AddPlugin(OVPlugin* plugin);
    // A plug-in object that is also entered into the adjustment registry.
    void AddAdjustment(OVAdjustment* adjustment);
    // A new entry of the role's menu, or null when the host has no such menu or the id is
    // taken. Its text is sourceText translated in the context of the derived class, again on
    // UIReady(). It leaves the menu on Release().
    QAction* AddMenuEntry(OVMenuManager::MenuRole role, int id, const char* sourceText);
    // Any other object the container deletes on Release().
    void Own(QObject* object);

private:
    void Clear();

    QList<OVPlugin*> m_plugins;
    QList<QString> m_adjustmentIDs;
    struct MenuEntry
    {
        OVMenuManager::MenuRole role;
        int id;
        const char* sourceText;
        QPointer<QAction> action;
    };

    QList<MenuEntry> m_menuEntries;
    QList<QPointer<QObject>> m_owned;
    bool m_initialized = false;
};
