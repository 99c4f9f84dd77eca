#include "OVToolBarManager.h"

#include "private/OVSingleton_p.h"
#include "private/OVToolContent_p.h"

// The content stack is OVToolContentPrivate's; the static operations reach it through the
// instance (s_instance, null without one).

OV_DEFINE_SINGLETON(OVToolBarManager)

// A tool-bar content usually holds input fields; one that is switched away from gives up the
// keyboard focus, so that typing does not go on into a field that is no longer shown.
OVToolBarManager::OVToolBarManager()
    : d(new OVToolContentPrivate(this, true, [this] { emit ContentChanged(); }))
{}

OVToolBarManager::~OVToolBarManager()
{
    delete d;
}

bool OVToolBarManager::Add(QWidget* content, const QString& uid)
{
    return s_instance ? s_instance->d->Add(content, uid) : false;
}

void OVToolBarManager::Activate(QWidget* content)
{
    if (s_instance)
        s_instance->d->Activate(content);
}

void OVToolBarManager::Remove(QWidget* content)
{
    if (s_instance)
        s_instance->d->Remove(content);
}

QWidget* OVToolBarManager::GeneralContent()
{
    return s_instance ? s_instance->d->general.data() : nullptr;
}

bool OVToolBarManager::IsGeneralContentEmpty()
{
    return s_instance ? s_instance->d->current == nullptr : true;
}

QString OVToolBarManager::CurrentUID()
{
    return s_instance ? s_instance->d->CurrentUID() : QString();
}

void OVToolBarManager::OnContentDestroyed(QObject* object)
{
    d->OnContentDestroyed(object);
}
