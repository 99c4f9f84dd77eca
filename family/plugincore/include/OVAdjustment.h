#pragma once

#include "OVPlugin.h"

#include <QImage>
#include <QVariantMap>

/// An image adjustment (levels, curves, hue/saturation, ...) offered by a plug-in. It is
/// registered under its UID with OVAdjustmentManager.
class OVPLUGINCORE_EXPORT OVAdjustment : public OVPlugin
{
    Q_OBJECT
public:
    /// An adjustment with the given parent.
    explicit OVAdjustment(QObject* parent = nullptr);
    ~OVAdjustment() override;

    /// OVPlugin::AdjustmentType.
    int GetType() const override;

    /// Applies the adjustment with the given parameters and returns the adjusted image.
    virtual QImage Apply(const QImage& image, const QVariantMap& parameters) const = 0;
};
