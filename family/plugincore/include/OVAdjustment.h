#pragma once

#include "OVPlugin.h"

#include <QImage>
#include <QList>
#include <QVariantMap>

// One parameter an adjustment takes: the key under which Apply() finds it, and the whole
// numbers it accepts. A host offers the parameters with these limits, fills in the default for
// any it is not given, and refuses a value outside the range.
struct OVAdjustmentParameter
{
    QString name;
    int minimum = 0;
    int maximum = 0;
    int defaultValue = 0;
};

// An image adjustment (levels, curves, hue/saturation, ...) offered by a plug-in. It is
// registered under its UID.
class OVPLUGINCORE_EXPORT OVAdjustment : public OVPlugin
{
    Q_OBJECT
public:
    explicit OVAdjustment(QObject* parent = nullptr);
    ~OVAdjustment() override;

    int GetType() const override;

    // Applies the adjustment with the given parameters and returns the adjusted image. Called
    // from worker threads, more than one at a time.
    virtual QImage Apply(const QImage& image, const QVariantMap& parameters) const = 0;
    // The parameters Apply() reads, in the order a host offers them; none by default.
    virtual QList<OVAdjustmentParameter> GetParameters() const;
};
