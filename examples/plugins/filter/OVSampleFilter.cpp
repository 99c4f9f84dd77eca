// The sample "filter" library: a box blur, entered into the adjustment registry as a filter and
// offered in the Filter menu. Each menu entry carries in its data the UID of the filter and the
// parameters to apply it with; the host applies the entry's filter to the current image.

#include "OVSampleContainer.h"
#include "OVSampleImage.h"

#include "OVAdjustment.h"

#include <QAction>
#include <QVector>

namespace {

// The mean of a (2 * radius + 1)-pixel square around each pixel, done as one horizontal and one
// vertical pass with a running sum; edges repeat the border pixels.
class OVBoxBlur : public OVAdjustment
{
    Q_OBJECT
public:
    int GetType() const override { return FilterType; }
    QString GetName() const override { return tr("Box Blur"); }
    QString GetVersion() const override { return QStringLiteral("1.0"); }
    QString GetUID() const override { return QStringLiteral("{8E0C52A4-7A31-4B8C-9D3E-0000000F0001}"); }
    QList<OVAdjustmentParameter> GetParameters() const override
    {
        return {{QStringLiteral("radius"), 0, 64, 2}};
    }

    QImage Apply(const QImage& image, const QVariantMap& parameters) const override
    {
        const int radius = qBound(0, parameters.value(QStringLiteral("radius"), 2).toInt(), 64);
        QImage result = OVSampleImage::Editable(image);
        if (radius == 0 || result.isNull())
            return result;
        const QImage::Format format = result.format();
        // Premultiplied sums, so that transparent pixels do not bleed their colour.
        result = result.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        const int w = result.width();
        const int h = result.height();
        QVector<QRgb> line(qMax(w, h));
        for (int y = 0; y < h; ++y) {
            QRgb* row = reinterpret_cast<QRgb*>(result.scanLine(y));
            for (int x = 0; x < w; ++x)
                line[x] = row[x];
            BlurLine(line.constData(), w, radius, [row](int x) -> QRgb& { return row[x]; });
        }
        for (int x = 0; x < w; ++x) {
            for (int y = 0; y < h; ++y)
                line[y] = reinterpret_cast<const QRgb*>(result.constScanLine(y))[x];
            BlurLine(line.constData(), h, radius,
                     [&result, x](int y) -> QRgb& { return reinterpret_cast<QRgb*>(result.scanLine(y))[x]; });
        }
        return result.convertToFormat(format);
    }

private:
    template <typename Out>
    static void BlurLine(const QRgb* in, int n, int radius, Out out)
    {
        const int size = 2 * radius + 1;
        int sum[4] = {0, 0, 0, 0};
        auto add = [&sum](QRgb p, int sign) {
            sum[0] += sign * qAlpha(p);
            sum[1] += sign * qRed(p);
            sum[2] += sign * qGreen(p);
            sum[3] += sign * qBlue(p);
        };
        auto at = [in, n](int i) { return in[qBound(0, i, n - 1)]; };
        for (int i = -radius; i <= radius; ++i)
            add(at(i), 1);
        for (int i = 0; i < n; ++i) {
            out(i) = qRgba(sum[1] / size, sum[2] / size, sum[3] / size, sum[0] / size);
            add(at(i - radius), -1);
            add(at(i + radius + 1), 1);
        }
    }
};

} // namespace

class OVFilterContainer : public OVSampleContainer
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OVPluginContainer_iid)
    Q_INTERFACES(OVPluginContainer)
protected:
    void Setup() override
    {
        OVBoxBlur* blur = new OVBoxBlur;
        AddAdjustment(blur);
        const struct
        {
            int id;
            const char* text;
            int radius;
        } entries[] = {{100, QT_TR_NOOP("Box Blur (small)"), 2}, {110, QT_TR_NOOP("Box Blur (large)"), 8}};
        for (const auto& entry : entries) {
            if (QAction* action = AddMenuEntry(OVMenuManager::Filter, entry.id, entry.text)) {
                action->setData(QVariantMap{{QStringLiteral("adjustment"), blur->GetUID()},
                                            {QStringLiteral("radius"), entry.radius}});
            }
        }
    }
};

#include "OVSampleFilter.moc"
