#pragma once

#include "OVPlugin.h"

#include <QImage>
#include <QList>
#include <QVariantMap>

/// One parameter an adjustment takes: the key under which Apply() finds it, and the whole
/// numbers it accepts. A host offers the parameters with these limits, fills in the default for
/// any it is not given, and refuses a value outside the range.
struct OVAdjustmentParameter
{
    QString name;         ///< The key of the parameter in the map Apply() receives.
    int minimum = 0;      ///< The smallest value accepted.
    int maximum = 0;      ///< The largest value accepted.
    int defaultValue = 0; ///< The value used when the host is given none.
};

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

    /// Applies the adjustment with the given parameters and returns the adjusted image. Called
    /// from worker threads, more than one at a time.
    virtual QImage Apply(const QImage& image, const QVariantMap& parameters) const = 0;
    /// The parameters Apply() reads, in the order a host offers them; none by default.
    virtual QList<OVAdjustmentParameter> GetParameters() const;
};
