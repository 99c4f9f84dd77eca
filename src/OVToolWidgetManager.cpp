#include "OVToolWidgetManager.h"

#include "private/OVSingleton_p.h"
#include "private/OVToolContent_p.h"

// The content stack is OVToolContentPrivate's; the static operations reach it through the
// instance (s_instance, null without one).

OV_DEFINE_SINGLETON(OVToolWidgetManager)

// A tool-widget content is hidden when switched away from, and the focus is left as it is.
OVToolWidgetManager::OVToolWidgetManager()
    : d(new OVToolContentPrivate(this, false, [this] { emit ContentChanged(); }))
{}

OVToolWidgetManager::~OVToolWidgetManager()
{
    delete d;
}

bool OVToolWidgetManager::Add(QWidget* content, const QString& uid)
{
    return s_instance ? s_instance->d->Add(content, uid) : false;
}

void OVToolWidgetManager::Activate(QWidget* content)
{
    if (s_instance)
        s_instance->d->Activate(content);
}

void OVToolWidgetManager::Remove(QWidget* content)
{
    if (s_instance)
        s_instance->d->Remove(content);
}

QWidget* OVToolWidgetManager::GeneralContent()
{
    return s_instance ? s_instance->d->general.data() : nullptr;
}

bool OVToolWidgetManager::IsGeneralContentEmpty()
{
    return s_instance ? s_instance->d->current == nullptr : true;
}

QString OVToolWidgetManager::CurrentUID()
{
    return s_instance ? s_instance->d->CurrentUID() : QString();
}

void OVToolWidgetManager::OnContentDestroyed(QObject* object)
{
    d->OnContentDestroyed(object);
}
