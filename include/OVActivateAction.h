#pragma once

#include "OVCoreExport.h"

#include <QObject>

class OVActivateActionPrivate;

/// A checkable tool action with two checked states: the explicit one (the tool the user
/// chose) and the implicit one (the tool in effect at the moment, which may be a temporary
/// tool while the chosen one stays checked).
///
/// Every change is announced by a signal; when both states change together,
/// ImplicitToggled() comes before Toggled(). A change happens only while IsAllowChange() is
/// true; a refused change emits nothing.
class OVCORE_EXPORT OVActivateAction : public QObject
{
    Q_OBJECT
public:
    /// An unchecked action that allows changes.
    explicit OVActivateAction(QObject* parent = nullptr);
    ~OVActivateAction() override;

    /// The explicit state: whether this is the tool the user chose.
    bool IsChecked() const;
    /// The implicit state: whether this is the tool in effect.
    bool IsImplicitlyChecked() const;

    /// Whether the states may change now; the value set by AllowChange() unless a subclass
    /// decides otherwise. Every state change and the tool group ask through this function.
    virtual bool IsAllowChange();

signals:
    /// The explicit state changed.
    void Toggled(bool checked);
    /// The implicit state changed.
    void ImplicitToggled(bool checked);

public slots:
    /// Allows or refuses later state changes; no signal.
    void AllowChange(bool allow = true);
    /// Flips the explicit state, as SetChecked(!IsChecked()).
    void Toggle();
    /// Flips the implicit state, as SetImplicitChecked(!IsImplicitlyChecked()).
    void ImplicitToggle();
    /// Sets the explicit state, and the implicit one to the same value first.
    void SetChecked(bool checked);
    /// Sets the implicit state only.
    void SetImplicitChecked(bool checked);

private:
    Q_DISABLE_COPY(OVActivateAction)

    OVActivateActionPrivate* const d;
};
