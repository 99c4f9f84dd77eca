#include "OVSampleContainer.h"

#include "OVAdjustment.h"
#include "OVAdjustmentManager.h"

#include <QAction>
#include <QCoreApplication>

OVSampleContainer::~OVSampleContainer()
{
    Clear();
}

void OVSampleContainer::Initialize()
{
    if (m_initialized)
        return;
    m_initialized = true;
    Setup();
}

void OVSampleContainer::Release()
{
    Clear();
    m_initialized = false;
}

void OVSampleContainer::UIReady()
{
    for (const MenuEntry& entry : qAsConst(m_menuEntries)) {
        if (entry.action)
            entry.action->setText(QCoreApplication::translate(metaObject()->className(), entry.sourceText));
    }
}

void OVSampleContainer::GetPlugins(QList<OVPlugin*>& plugins)
{
    plugins << m_plugins;
}

void OVSampleContainer::AddPlugin(OVPlugin* plugin)
{
    m_plugins << plugin;
    Own(plugin);
}

void OVSampleContainer::AddAdjustment(OVAdjustment* adjustment)
{
    AddPlugin(adjustment);
    OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
    if (registry && registry->Register(adjustment))
        m_adjustmentIDs << adjustment->GetUID();
}

QAction* OVSampleContainer::AddMenuEntry(OVMenuManager::MenuRole role, int id, const char* sourceText)
{
    QAction* action = OVMenuManager::CreateAction(role, id);
    if (!action)
        return nullptr;
    action->setText(QCoreApplication::translate(metaObject()->className(), sourceText));
    m_menuEntries << MenuEntry{role, id, sourceText, action};
    Own(action);
    return action;
}

void OVSampleContainer::Own(QObject* object)
{
    m_owned << object;
}

void OVSampleContainer::Clear()
{
    for (const auto& entry : qAsConst(m_menuEntries))
        OVMenuManager::Take(entry.role, entry.id);
    m_menuEntries.clear();
    if (OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance()) {
        for (const QString& id : qAsConst(m_adjustmentIDs))
            registry->Unregister(id);
    }
    m_adjustmentIDs.clear();
    m_plugins.clear();
    // Objects the host already deleted (menu entries go with their menu) are skipped.
    while (!m_owned.isEmpty())
        delete m_owned.takeLast().data();
}
