#pragma once

/// \file
/// The plug-in container interface that the root object of every plug-in library implements.

#include "OVPluginCoreExport.h"

#include <QList>
#include <QtPlugin>

class OVPlugin;

/// The interface id of OVPluginContainer, for Q_PLUGIN_METADATA and Q_INTERFACES.
#define OVPluginContainer_iid "Orvelin.PluginContainer/1.0"

/// The root object of every plug-in library.
///
/// A library's root object derives from QObject and this interface and declares it with
/// \code
///     Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
///     Q_INTERFACES(OVPluginContainer)
/// \endcode
/// The host calls Initialize() once after loading, GetPlugins() to collect the plug-in objects,
/// UIReady() when its windows exist, and Release() before unloading the library.
class OVPLUGINCORE_EXPORT OVPluginContainer
{
public:
    /// Called once right after the library is loaded: the place to make the plug-in objects
    /// and to register them (adjustments, brushes, menu entries, tools) with the registries of
    /// the core library. Image file plug-ins are registered by the loader itself.
    virtual void Initialize() = 0;
    /// Called before the library is unloaded: the place to unregister and delete what
    /// Initialize() made, so that nothing of the library's code outlives it.
    virtual void Release() = 0;
    /// Called once the host's user interface exists (its menus, tool bars and language).
    virtual void UIReady() = 0;
    /// Appends the container's plug-in objects to the list; the container keeps owning them.
    /// A container that offers none is not loaded.
    virtual void GetPlugins(QList<OVPlugin*>& plugins) = 0;

    virtual ~OVPluginContainer();
};

Q_DECLARE_INTERFACE(OVPluginContainer, OVPluginContainer_iid)
