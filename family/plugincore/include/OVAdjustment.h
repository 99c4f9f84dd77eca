#pragma once

#include "OVPlugin.h"

#include <QImage>
#include <QVariantMap>

// An image adjustment (levels, curves, hue/saturation, ...) offered by a plug-in. It is
// registered under its UID.
class OVPLUGINCORE_EXPORT OVAdjustment : public OVPlugin
{
    Q_OBJECT
public:
    explicit OVAdjustment(QObject* parent = nullptr);
    ~OVAdjustment() override;

    int GetType() const override;

    // Applies the adjustment with the given parameters and returns the adjusted image.
    virtual QImage Apply(const QImage& image, const QVariantMap& parameters) const = 0;
};
