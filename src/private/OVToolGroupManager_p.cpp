#include "private/OVToolGroupManager_p.h"

#include "OVActivateAction.h"

#include <QPointer>

OVToolGroupManagerPrivate::OVToolGroupManagerPrivate(OVToolGroupManager* owner)
    : owner(owner)
{}

void OVToolGroupManagerPrivate::Add(OVActivateAction* action, const QString& uid)
{
    if (!action || uids.contains(action))
        return;
    // A checked action that may change is kept out of the group; one that may not change is
    // taken in as it is, the request to uncheck it being refused.
    if (action->IsChecked()) {
        if (action->IsAllowChange())
            return;
        action->SetChecked(false);
    }
    Connect(action);
    uids.insert(action, uid);
}

void OVToolGroupManagerPrivate::Remove(OVActivateAction* action)
{
    if (!action || !uids.contains(action))
        return;
    Disconnect(action);
    Forget(action);
}

bool OVToolGroupManagerPrivate::Activate(OVActivateAction* action)
{
    if (!action)
        return false;
    // The explicit action is followed by a guarded pointer in case a receiver deletes it.
    QPointer<QObject> chosen = explicitAction;
    for (;;) {
        QObject* current = implicitAction;
        if (!current && !chosen) {
            action->SetChecked(true);
            return true;
        }
        if (current) {
            if (current != chosen) {
                auto* temporary = qobject_cast<OVActivateAction*>(current);
                if (!temporary || !temporary->IsAllowChange())
                    return false;
                // Not quietly: the slot hands the implicit state back to the chosen tool.
                temporary->SetImplicitChecked(false);
            }
            // With only a temporary tool in force, ending it is all that happens.
            if (!chosen)
                return true;
        }
        if (chosen == action)
            return true;
        auto* previous = qobject_cast<OVActivateAction*>(chosen.data());
        if (!previous || !previous->IsAllowChange())
            return false;
        previous->SetChecked(false);
        // An action that still holds the explicit role refused after all; asking again
        // would never end, so Activate() ends here on purpose instead of looping.
        if (explicitAction && explicitAction == previous)
            return false;
        chosen = explicitAction;
    }
}

void OVToolGroupManagerPrivate::Toggled(QObject* sender, bool checked)
{
    if (!sender)
        return;
    if (checked) {
        // The explicit state is made exclusive by Activate(), not here.
        explicitAction = sender;
        if (implicitAction && implicitAction != sender)
            SetImplicitQuietly(implicitAction, false);
        implicitAction = sender;
    } else if (sender == explicitAction) {
        explicitAction = nullptr;
    }
}

void OVToolGroupManagerPrivate::ImplicitToggled(QObject* sender, bool checked)
{
    if (!sender)
        return;
    if (checked) {
        if (sender == implicitAction)
            return;
        if (implicitAction)
            SetImplicitQuietly(implicitAction, false);
        implicitAction = sender;
    } else if (sender == implicitAction) {
        SetImplicitQuietly(sender, false);
        implicitAction = nullptr;
        if (explicitAction && explicitAction != sender) {
            SetImplicitQuietly(explicitAction, true);
            implicitAction = explicitAction;
        }
    }
}

void OVToolGroupManagerPrivate::Destroyed(QObject* object)
{
    if (!object || !uids.contains(object))
        return;
    Forget(object);
}

void OVToolGroupManagerPrivate::SetImplicitQuietly(QObject* object, bool checked)
{
    QPointer<OVActivateAction> action = qobject_cast<OVActivateAction*>(object);
    if (!action)
        return;
    QObject::disconnect(action, &OVActivateAction::ImplicitToggled, owner,
                        &OVToolGroupManager::OnImplicitToggled);
    action->SetImplicitChecked(checked);
    // A receiver of the change may have deleted the action.
    if (action)
        QObject::connect(action, &OVActivateAction::ImplicitToggled, owner,
                         &OVToolGroupManager::OnImplicitToggled);
}

void OVToolGroupManagerPrivate::Forget(QObject* object)
{
    if (object == implicitAction) {
        implicitAction = nullptr;
        if (explicitAction && explicitAction != object) {
            SetImplicitQuietly(explicitAction, true);
            implicitAction = explicitAction;
        }
    }
    if (object == explicitAction)
        explicitAction = nullptr;
    uids.remove(object);
}

void OVToolGroupManagerPrivate::Connect(OVActivateAction* action)
{
    QObject::connect(action, &OVActivateAction::Toggled, owner, &OVToolGroupManager::OnToggled);
    QObject::connect(action, &OVActivateAction::ImplicitToggled, owner,
                     &OVToolGroupManager::OnImplicitToggled);
    QObject::connect(action, &QObject::destroyed, owner, &OVToolGroupManager::OnDestroyed);
}

void OVToolGroupManagerPrivate::Disconnect(OVActivateAction* action)
{
    QObject::disconnect(action, &OVActivateAction::Toggled, owner, &OVToolGroupManager::OnToggled);
    QObject::disconnect(action, &OVActivateAction::ImplicitToggled, owner,
                        &OVToolGroupManager::OnImplicitToggled);
    QObject::disconnect(action, &QObject::destroyed, owner, &OVToolGroupManager::OnDestroyed);
}
