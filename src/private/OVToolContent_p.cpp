#include "private/OVToolContent_p.h"

#include <QSizePolicy>

#include <utility>

namespace {

// Preferred in both directions, and no room kept for the widget while it is hidden, so that
// the general widget takes the size of the one content it shows.
QSizePolicy ContentSizePolicy()
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setRetainSizeWhenHidden(false);
    return policy;
}

} // namespace

OVToolContentPrivate::OVToolContentPrivate(QObject* owner, bool clearFocusOnSwitch,
                                           std::function<void()> contentChanged)
    : owner(owner)
    , general(new QWidget)
    , layout(new QGridLayout(general))
    , clearFocusOnSwitch(clearFocusOnSwitch)
    , contentChanged(std::move(contentChanged))
{
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetMinAndMaxSize);
    general->setSizePolicy(ContentSizePolicy());
}

OVToolContentPrivate::~OVToolContentPrivate()
{
    // The contents die with the general widget while the manager is going away itself; they
    // must not report that back to it, so on purpose no ContentChanged is emitted here: its
    // receivers would call back into a manager half destroyed.
    for (QObject* content : uids.keys())
        QObject::disconnect(content, SIGNAL(destroyed(QObject*)), owner, SLOT(OnContentDestroyed(QObject*)));
    uids.clear();
    current = nullptr;
    delete general.data();
}

bool OVToolContentPrivate::Add(QWidget* content, const QString& uid)
{
    // Neither the general widget nor a widget that holds it can live inside its layout.
    if (!content || !layout || content->isAncestorOf(general) || uids.contains(content))
        return false;
    content->setSizePolicy(ContentSizePolicy());
    layout->addWidget(content);
    content->hide();
    uids.insert(content, uid);
    QObject::connect(content, SIGNAL(destroyed(QObject*)), owner, SLOT(OnContentDestroyed(QObject*)));
    return true;
}

void OVToolContentPrivate::Activate(QWidget* content)
{
    QWidget* shown = qobject_cast<QWidget*>(current);
    if (shown == content)
        return;
    if (uids.contains(content)) {
        if (shown)
            HideCurrent(shown);
        current = content;
        content->show();
        if (general)
            general->setWindowTitle(content->windowTitle());
        contentChanged();
        return;
    }
    // A widget that was never added is ignored; null hides what is shown and keeps the title.
    if (content || !current)
        return;
    if (shown)
        HideCurrent(shown);
    current = nullptr;
    contentChanged();
}

void OVToolContentPrivate::Remove(QWidget* content)
{
    if (!content || !uids.contains(content))
        return;
    QObject::disconnect(content, SIGNAL(destroyed(QObject*)), owner, SLOT(OnContentDestroyed(QObject*)));
    content->hide();
    if (layout)
        layout->removeWidget(content);
    uids.remove(content);
    if (current == content)
        CurrentGone();
}

QString OVToolContentPrivate::CurrentUID() const
{
    // The shown content's UID is looked up but not handed out: callers have always received
    // an empty string here and keep their own record of which tool is active.
    const QString uid = uids.value(current);
    static_cast<void>(uid);
    return QString();
}

void OVToolContentPrivate::OnContentDestroyed(QObject* object)
{
    uids.remove(object);
    if (object && object == current)
        CurrentGone();
}

void OVToolContentPrivate::HideCurrent(QWidget* shown)
{
    if (clearFocusOnSwitch) {
        if (QWidget* focus = shown->focusWidget())
            focus->clearFocus();
    }
    shown->hide();
}

void OVToolContentPrivate::CurrentGone()
{
    current = nullptr;
    if (general)
        general->setWindowTitle(QString());
    contentChanged();
}
