#pragma once

#include <QGridLayout>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>

// The content stack behind OVToolBarManager and OVToolWidgetManager: one general widget whose
// grid layout holds every registered content widget, of which at most one is shown. The two
// managers differ only in clearFocusOnSwitch.
class OVToolContentPrivate
{
public:
    // owner is the manager: its OnContentDestroyed(QObject*) slot follows the contents, and
    // contentChanged emits its ContentChanged() signal.
    OVToolContentPrivate(QObject* owner, bool clearFocusOnSwitch, std::function<void()> contentChanged);
    // Deletes the general widget and with it the contents that are still its children.
    ~OVToolContentPrivate();

    OVToolContentPrivate(const OVToolContentPrivate&) = delete;
    OVToolContentPrivate& operator=(const OVToolContentPrivate&) = delete;

    bool Add(QWidget* content, const QString& uid);
    void Activate(QWidget* content);
    void Remove(QWidget* content);
    QString CurrentUID() const;
    void OnContentDestroyed(QObject* object);

    QObject* const owner;
    // The host usually puts the general widget into its own window, which may delete it before
    // the manager goes; the guards notice that.
    QPointer<QWidget> general;
    QPointer<QGridLayout> layout;
    QObject* current = nullptr; // the content shown now
    QMap<QObject*, QString> uids;
    const bool clearFocusOnSwitch;

private:
    // Hides the shown content, taking the focus from its focus widget first if asked to.
    void HideCurrent(QWidget* shown);
    // Nothing is shown any more because the shown content left the registry.
    void CurrentGone();

    const std::function<void()> contentChanged;
};
