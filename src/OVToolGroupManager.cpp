#include "OVToolGroupManager.h"

#include "OVActivateAction.h"
#include "private/OVSingleton_p.h"
#include "private/OVToolGroupManager_p.h"

OV_DEFINE_SINGLETON(OVToolGroupManager)

OVToolGroupManager::OVToolGroupManager()
    : d(new OVToolGroupManagerPrivate(this))
{}

OVToolGroupManager::~OVToolGroupManager()
{
    delete d;
}

void OVToolGroupManager::Add(OVActivateAction* action, const QString& uid)
{
    if (s_instance)
        s_instance->d->Add(action, uid);
}

void OVToolGroupManager::Remove(OVActivateAction* action)
{
    if (s_instance)
        s_instance->d->Remove(action);
}

bool OVToolGroupManager::Activate(OVActivateAction* action)
{
    return s_instance && s_instance->d->Activate(action);
}

OVActivateAction* OVToolGroupManager::GetExplicitAction()
{
    return s_instance ? qobject_cast<OVActivateAction*>(s_instance->d->explicitAction) : nullptr;
}

OVActivateAction* OVToolGroupManager::GetImplicitAction()
{
    return s_instance ? qobject_cast<OVActivateAction*>(s_instance->d->implicitAction) : nullptr;
}

QString OVToolGroupManager::GetExplicitToolUID()
{
    if (!s_instance)
        return QString();
    // A lookup that finds nothing leaves an empty entry behind, as a map lookup by key does;
    // the entry for a null key is never a member.
    return s_instance->d->uids[s_instance->d->explicitAction];
}

void OVToolGroupManager::OnToggled(bool checked)
{
    d->Toggled(sender(), checked);
}

void OVToolGroupManager::OnImplicitToggled(bool checked)
{
    d->ImplicitToggled(sender(), checked);
}

void OVToolGroupManager::OnDestroyed(QObject* object)
{
    // The object is in its destruction: only its address is used.
    d->Destroyed(object);
}
