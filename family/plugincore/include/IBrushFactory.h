#pragma once

#include "OVPluginCoreExport.h"

#include <QStringList>

class QObject;

/// Makes the brushes that painting tools use.
///
/// One plug-in object provides it: the one whose UID is OVPlugin::BrushFactoryUID implements
/// this interface besides OVPlugin. The host reaches it through
/// OVApplication::GetBrushFactory().
class OVPLUGINCORE_EXPORT IBrushFactory
{
public:
    virtual ~IBrushFactory();

    /// The names of the brushes the factory makes.
    virtual QStringList GetBrushNames() const = 0;
    /// A new brush object owned by the caller, or null for an unknown name.
    virtual QObject* CreateBrush(const QString& name) = 0;
};
