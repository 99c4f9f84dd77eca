#include "OVActivateAction.h"

#include "private/OVActivateAction_p.h"

#include <QPointer>

OVActivateAction::OVActivateAction(QObject* parent)
    : QObject(parent)
    , d(new OVActivateActionPrivate(this))
{}

OVActivateAction::~OVActivateAction()
{
    delete d;
}

bool OVActivateAction::IsChecked() const
{
    return d->checked;
}

bool OVActivateAction::IsImplicitlyChecked() const
{
    return d->implicitlyChecked;
}

bool OVActivateAction::IsAllowChange()
{
    return d->allowChange;
}

void OVActivateAction::AllowChange(bool allow)
{
    d->allowChange = allow;
}

void OVActivateAction::Toggle()
{
    SetChecked(!IsChecked());
}

void OVActivateAction::ImplicitToggle()
{
    SetImplicitChecked(!IsImplicitlyChecked());
}

void OVActivateAction::SetChecked(bool checked)
{
    if (checked == d->checked || !IsAllowChange())
        return;
    if (d->implicitlyChecked != checked) {
        d->implicitlyChecked = checked;
        // A receiver of the first signal may delete the action.
        const QPointer<OVActivateAction> alive(this);
        emit ImplicitToggled(checked);
        if (!alive)
            return;
    }
    d->checked = checked;
    emit Toggled(checked);
}

void OVActivateAction::SetImplicitChecked(bool checked)
{
    if (checked == d->implicitlyChecked || !IsAllowChange())
        return;
    d->implicitlyChecked = checked;
    emit ImplicitToggled(checked);
}
