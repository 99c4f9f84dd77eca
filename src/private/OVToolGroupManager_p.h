#pragma once

#include "OVToolGroupManager.h"

#include <QMap>
#include <QString>

class OVActivateAction;

class OVToolGroupManagerPrivate
{
public:
    explicit OVToolGroupManagerPrivate(OVToolGroupManager* owner);

    OVToolGroupManagerPrivate(const OVToolGroupManagerPrivate&) = delete;
    OVToolGroupManagerPrivate& operator=(const OVToolGroupManagerPrivate&) = delete;

    void Add(OVActivateAction* action, const QString& uid);
    void Remove(OVActivateAction* action);
    bool Activate(OVActivateAction* action);

    // What the owner's slots do with a member's signal.
    void Toggled(QObject* sender, bool checked);
    void ImplicitToggled(QObject* sender, bool checked);
    // Forgets a member that is being destroyed; only the pointer value is used.
    void Destroyed(QObject* object);

    OVToolGroupManager* const owner;
    QObject* explicitAction = nullptr;
    QObject* implicitAction = nullptr;
    QMap<QObject*, QString> uids; // the members and their tool UIDs

private:
    // Sets a member's implicit state without hearing the change back through the owner's
    // own slot; the member's other receivers still see it.
    void SetImplicitQuietly(QObject* object, bool checked);
    // Drops a member from the implicit and explicit roles and from the map; the explicit
    // action takes the implicit role back when the member held it.
    void Forget(QObject* object);
    void Connect(OVActivateAction* action);
    void Disconnect(OVActivateAction* action);
};
