#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>

class QWidget;
class OVToolContentPrivate;

/// The tools' tool-bar contents.
///
/// The host places the general content widget once in its tool bar area; each tool registers
/// its content widget under its UID, and Activate() shows one of them (or none) inside the
/// general widget. Registered contents become children of the general widget, so they are
/// deleted with it when the instance is released.
///
/// Switching away from a content takes the keyboard focus from the content's focus widget, so
/// that keys typed afterwards do not go to a field that is no longer shown.
class OVCORE_EXPORT OVToolBarManager : public QObject
{
    Q_OBJECT
public:
    /// Creates the manager and its general content widget; a second call does nothing.
    static void InitInstance();
    /// The manager, or null before InitInstance() and after ReleaseInstance().
    static OVToolBarManager* GetInstance();
    /// Deletes the manager with the general content widget and the registered contents.
    static void ReleaseInstance();

    /// Registers a tool's content widget under the tool's UID; it becomes a child of the
    /// general content widget and stays hidden until it is activated. False for a content that
    /// is already registered (its UID stays), for null, and for the general widget or a widget
    /// that holds it.
    static bool Add(QWidget* content, const QString& uid);
    /// Shows a registered content and hides the one shown before; null hides the shown one.
    /// Contents that are not registered are ignored.
    static void Activate(QWidget* content);
    /// Unregisters content without deleting it; it stays hidden and a child of the general
    /// widget.
    static void Remove(QWidget* content);
    /// The widget the host places once, inside which the active tool's content is shown.
    static QWidget* GeneralContent();
    /// True while no content is shown.
    static bool IsGeneralContentEmpty();
    /// Always empty: callers keep their own record of which tool is shown.
    static QString CurrentUID();

signals:
    /// The shown content changed (never on Add()).
    void ContentChanged();

private slots:
    void OnContentDestroyed(QObject* object);

private:
    OVToolBarManager();
    ~OVToolBarManager() override;
    Q_DISABLE_COPY(OVToolBarManager)

    OVToolContentPrivate* const d;
};
