#pragma once

#include "OVPlugin.h"

#include <QStringList>

/// A brush tool offered by a plug-in. It is registered under its UID with OVBrushToolManager.
class OVPLUGINCORE_EXPORT OVBrushPlugin : public OVPlugin
{
    Q_OBJECT
public:
    /// A brush plug-in with the given parent.
    explicit OVBrushPlugin(QObject* parent = nullptr);
    ~OVBrushPlugin() override;

    /// OVPlugin::BrushType.
    int GetType() const override;

    /// The names of the brush tips this plug-in provides; none unless overridden.
    virtual QStringList GetBrushNames() const;
};
