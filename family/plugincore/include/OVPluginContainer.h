#pragma once

#include "OVPluginCoreExport.h"

#include <QList>
#include <QtPlugin>

class OVPlugin;

#define OVPluginContainer_iid "Orvelin.PluginContainer/1.0"

// The root object of every plug-in library. A library declares it with
//     Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
//     Q_INTERFACES(OVPluginContainer)
// The host calls Initialize() once after loading, GetPlugins() to collect the plug-in objects,
// UIReady() when its windows exist, and Release() before unloading the library.
class OVPLUGINCORE_EXPORT OVPluginContainer
{
public:
    virtual void Initialize() = 0;
    virtual void Release() = 0;
    virtual void UIReady() = 0;
    // Appends the container's plug-in objects to the list; the container keeps owning them.
    virtual void GetPlugins(QList<OVPlugin*>& plugins) = 0;

    virtual ~OVPluginContainer();
};

Q_DECLARE_INTERFACE(OVPluginContainer, OVPluginContainer_iid)
