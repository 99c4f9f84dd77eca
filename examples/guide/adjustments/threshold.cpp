// The plug-in library "adjustments" with one adjustment, Threshold: pixels darker than a level
// become black, the others white.

#include <OVAdjustment.h>
#include <OVAdjustmentManager.h>
#include <OVPluginContainer.h>

#include <QImage>

class ThresholdAdjustment : public OVAdjustment
{
    Q_OBJECT
public:
    QString GetName() const override { return tr("Threshold"); }
    QString GetVersion() const override { return QStringLiteral("1.0"); }
    QString GetUID() const override { return QStringLiteral("{2C7D5E90-1B4A-4E3F-9A61-5D8E0C7B0001}"); }

    // The parameter "level" runs from 0 to 255 (128 when it is not given); alpha is kept.
    QImage Apply(const QImage& image, const QVariantMap& parameters) const override
    {
        const int level = qBound(0, parameters.value(QStringLiteral("level"), 128).toInt(), 255);
        QImage result = image.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < result.height(); ++y) {
            QRgb* line = reinterpret_cast<QRgb*>(result.scanLine(y));
            for (int x = 0; x < result.width(); ++x) {
                const int value = qGray(line[x]) < level ? 0 : 255;
                line[x] = qRgba(value, value, value, qAlpha(line[x]));
            }
        }
        return result;
    }
};

// The library's root object. The container enters its adjustment into the registry when the
// library is loaded and takes it out again before the library is unloaded.
class ThresholdContainer : public QObject, public OVPluginContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
public:
    void Initialize() override
    {
        if (OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance())
            registry->Register(&m_threshold);
    }

    void Release() override
    {
        OVAdjustmentManager* registry = OVAdjustmentManager::GetInstance();
        if (registry && registry->GetAdjustment(m_threshold.GetUID()) == &m_threshold)
            registry->Unregister(m_threshold.GetUID());
    }

    void UIReady() override {}
    void GetPlugins(QList<OVPlugin*>& plugins) override { plugins << &m_threshold; }

private:
    ThresholdAdjustment m_threshold;
};

#include "threshold.moc"
