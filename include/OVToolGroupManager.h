#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>

class OVActivateAction;
class OVToolGroupManagerPrivate;

/// Ties the tool actions added to it into one exclusive group, each action with its tool UID.
///
/// At most one member is the explicit action (the chosen tool) and at most one the implicit
/// action (the tool in effect); when a temporary tool lets go of the implicit state, the
/// chosen tool takes it back. The manager follows its members through their signals and
/// forgets a member when it is destroyed; it never owns them.
///
/// Every operation does nothing, or returns false, null or an empty string, while there is no
/// instance.
class OVCORE_EXPORT OVToolGroupManager : public QObject
{
    Q_OBJECT
public:
    /// Creates the manager; a second call does nothing.
    static void InitInstance();
    /// The manager, or null before InitInstance() and after ReleaseInstance().
    static OVToolGroupManager* GetInstance();
    /// Deletes the manager; the actions stay with their owners.
    static void ReleaseInstance();

    /// Adds a tool action with its tool UID to the group. Adding an action again keeps its
    /// first UID. An action that is checked and may change is not taken in. Adding makes the
    /// action neither explicit nor implicit.
    static void Add(OVActivateAction* action, const QString& uid);
    /// Takes the action out without touching its states; when it was the implicit action the
    /// explicit one, if any, becomes implicit again.
    static void Remove(OVActivateAction* action);
    /// Makes the action the chosen tool: ends a temporary tool, unchecks the chosen one and
    /// checks the action.
    ///
    /// False when a member in the way refuses to change. With only a temporary tool in force
    /// and none chosen, the temporary tool is ended and the action stays unchecked.
    static bool Activate(OVActivateAction* action);

    /// The chosen tool's action, or null.
    static OVActivateAction* GetExplicitAction();
    /// The action of the tool in effect, or null.
    static OVActivateAction* GetImplicitAction();
    /// The UID of the explicit action; empty when there is none.
    static QString GetExplicitToolUID();

private slots:
    void OnToggled(bool checked);
    void OnImplicitToggled(bool checked);
    void OnDestroyed(QObject* object);

private:
    OVToolGroupManager();
    ~OVToolGroupManager() override;
    Q_DISABLE_COPY(OVToolGroupManager)

    friend class OVToolGroupManagerPrivate;

    OVToolGroupManagerPrivate* const d;
};
