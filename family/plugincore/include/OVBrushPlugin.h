#pragma once

#include "OVPlugin.h"

#include <QStringList>

// A brush tool offered by a plug-in. It is registered under its UID.
class OVPLUGINCORE_EXPORT OVBrushPlugin : public OVPlugin
{
    Q_OBJECT
public:
    explicit OVBrushPlugin(QObject* parent = nullptr);
    ~OVBrushPlugin() override;

    int GetType() const override;

    // The names of the brush tips this plug-in provides.
    virtual QStringList GetBrushNames() const;
};
