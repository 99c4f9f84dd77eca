#include "OVBrushToolManager.h"

#include "private/OVBrushToolManager_p.h"

OV_DEFINE_ITEM_REGISTRY_FACE(OVBrushToolManager, OVBrushPlugin, GetPlugin)

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
