#include "OVAdjustmentManager.h"

#include "private/OVAdjustmentManager_p.h"
#include "private/OVSingleton_p.h"

// The registry's operations are OVItemRegistry's, under the names of this class.

OV_DEFINE_SINGLETON(OVAdjustmentManager)

OVAdjustmentManager::OVAdjustmentManager()
    : d(new OVAdjustmentManagerPrivate(this))
{}

OVAdjustmentManager::~OVAdjustmentManager()
{
    delete d;
}

bool OVAdjustmentManager::Register(OVAdjustment* adjustment)
{
    return d->Register(adjustment);
}

bool OVAdjustmentManager::Unregister(const QString& id)
{
    return d->Unregister(id);
}

OVAdjustment* OVAdjustmentManager::GetAdjustment(const QString& id)
{
    return d->Get(id);
}

QString OVAdjustmentManager::GetID(OVAdjustment* adjustment)
{
    return d->GetID(adjustment);
}

QStringList OVAdjustmentManager::GetRegistered()
{
    return d->GetRegistered();
}
