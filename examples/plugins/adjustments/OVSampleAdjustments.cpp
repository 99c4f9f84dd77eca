// The sample "adjustments" library: brightness/contrast and grey-scale, entered into the
// adjustment registry. Each adjustment declares the parameters it takes (GetParameters), so that
// a host can offer them without knowing the adjustment.

#include "OVSampleContainer.h"
#include "OVSampleImage.h"

#include "OVAdjustment.h"

#include <QtMath>

namespace {

// Brightness moves every channel by brightness * 255 / 100; contrast scales the distance from
// the middle grey by (100 + contrast) / 100. Both run from -100 to 100.
class OVBrightnessContrast : public OVAdjustment
{
    Q_OBJECT
public:
    QString GetName() const override { return tr("Brightness/Contrast"); }
    QString GetVersion() const override { return QStringLiteral("1.0"); }
    QString GetUID() const override { return QStringLiteral("{8E0C52A4-7A31-4B8C-9D3E-0000000A0001}"); }
    QList<OVAdjustmentParameter> GetParameters() const override
    {
        return {{QStringLiteral("brightness"), -100, 100, 0}, {QStringLiteral("contrast"), -100, 100, 0}};
    }

    QImage Apply(const QImage& image, const QVariantMap& parameters) const override
    {
        const double brightness = qBound(-100, parameters.value(QStringLiteral("brightness")).toInt(), 100);
        const double contrast = qBound(-100, parameters.value(QStringLiteral("contrast")).toInt(), 100);
        const double offset = brightness * 255.0 / 100.0;
        const double scale = (100.0 + contrast) / 100.0;
        uchar table[256];
        for (int v = 0; v < 256; ++v)
            table[v] = uchar(qBound(0, qRound((v - 127.5) * scale + 127.5 + offset), 255));
        return OVSampleImage::MapChannels(image, table);
    }
};

// Rec. 601 luma in every channel; alpha is kept.
class OVGreyscale : public OVAdjustment
{
    Q_OBJECT
public:
    QString GetName() const override { return tr("Grey-scale"); }
    QString GetVersion() const override { return QStringLiteral("1.0"); }
    QString GetUID() const override { return QStringLiteral("{8E0C52A4-7A31-4B8C-9D3E-0000000A0002}"); }

    QImage Apply(const QImage& image, const QVariantMap&) const override
    {
        QImage result = OVSampleImage::Editable(image);
        for (int y = 0; y < result.height(); ++y) {
            QRgb* line = reinterpret_cast<QRgb*>(result.scanLine(y));
            for (int x = 0; x < result.width(); ++x) {
                const int grey = qGray(line[x]);
                line[x] = qRgba(grey, grey, grey, qAlpha(line[x]));
            }
        }
        return result;
    }
};

} // namespace

class OVAdjustmentsContainer : public OVSampleContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
protected:
    void Setup() override
    {
        AddAdjustment(new OVBrightnessContrast);
        AddAdjustment(new OVGreyscale);
    }
};

#include "OVSampleAdjustments.moc"
