#include "OVBrushToolManager.h"

#include "private/OVBrushToolManager_p.h"
#include "private/OVSingleton_p.h"

// The registry's operations are OVItemRegistry's, under the names of this class.

OV_DEFINE_SINGLETON(OVBrushToolManager)

OVBrushToolManager::OVBrushToolManager()
    : d(new OVBrushToolManagerPrivate(this))
{}

OVBrushToolManager::~OVBrushToolManager()
{
    delete d;
}

bool OVBrushToolManager::Register(OVBrushPlugin* plugin)
{
    return d->Register(plugin);
}

bool OVBrushToolManager::Unregister(const QString& id)
{
    return d->Unregister(id);
}

OVBrushPlugin* OVBrushToolManager::GetPlugin(const QString& id)
{
    return d->Get(id);
}

QString OVBrushToolManager::GetID(OVBrushPlugin* plugin)
{
    return d->GetID(plugin);
}

QStringList OVBrushToolManager::GetRegistered()
{
    return d->GetRegistered();
}

void OVBrushToolManager::SetMainBrushPlugin(OVBrushPlugin* plugin)
{
    if (plugin == d->mainBrush)
        return;
    if (d->mainBrush)
        disconnect(d->mainBrush, &QObject::destroyed, this, &OVBrushToolManager::OnMainBrushPluginDestroyed);
    d->mainBrush = plugin;
    if (plugin)
        connect(plugin, &QObject::destroyed, this, &OVBrushToolManager::OnMainBrushPluginDestroyed);
}

OVBrushPlugin* OVBrushToolManager::GetMainBrushPlugin() const
{
    return d->mainBrush;
}

void OVBrushToolManager::OnMainBrushPluginDestroyed()
{
    d->mainBrush = nullptr;
}
