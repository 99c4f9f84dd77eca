#pragma once

#include "OVCoreExport.h"

#include <QObject>

class OVActivateActionPrivate;

// A checkable tool action with two checked states: the explicit one (the tool the user chose)
// and the implicit one (the tool in effect at the moment, which may be a temporary tool while
// the chosen one stays checked). Every change is announced by a signal; when both states
// change together, ImplicitToggled() comes before Toggled().
//
// A change happens only while IsAllowChange() is true; a refused change emits nothing.
class OVCORE_EXPORT OVActivateAction : public QObject
{
    Q_OBJECT
public:
    explicit OVActivateAction(QObject* parent = nullptr);
    ~OVActivateAction() override;

    bool IsChecked() const;
    bool IsImplicitlyChecked() const;

    // Whether the states may change now; the value set by AllowChange() unless a subclass
    // decides otherwise. Every state change and the tool group ask through this function.
    virtual bool IsAllowChange();

signals:
    void Toggled(bool checked);
    void ImplicitToggled(bool checked);

public slots:
    void AllowChange(bool allow = true);
    void Toggle();
    void ImplicitToggle();
    // Setting the explicit state sets the implicit one to the same value first.
    void SetChecked(bool checked);
    void SetImplicitChecked(bool checked);

private:
    Q_DISABLE_COPY(OVActivateAction)

    OVActivateActionPrivate* const d;
};
