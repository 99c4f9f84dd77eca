#pragma once

#include "OVSampleCanvas.h"

#include <QAbstractScrollArea>
#include <QImage>

// The view of one open image: drawn at a zoom, scrolled, centred when smaller than the view.
// Mouse presses and drags over it go to the tool in effect, in image coordinates. A preview
// (any size; drawn over the whole image) may stand in for the image while a dialog is open.
class OVDemoCanvas : public QAbstractScrollArea, public OVSampleCanvas
{
    Q_OBJECT
public:
    explicit OVDemoCanvas(const QImage& image, QWidget* parent = nullptr);

    const QImage& Image() const override { return m_image; }
    void SetImage(const QImage& image);
    void SetPreview(const QImage& preview);

    double Zoom() const override { return m_zoom; }
    void SetZoom(double zoom, const QPointF& anchor) override;
    QPointF Centre() const override;
    void ScrollBy(const QPointF& distance) override;
    // The whole image in the view, enlarged if need be; and 100%.
    void FitToWindow();
    void ActualSize();

    // The image point under a point of the viewport.
    QPointF ToImage(const QPointF& position) const;

signals:
    void ZoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    enum Fit
    {
        NoFit,
        ShrinkToFit, // fit when the image is larger than the view; the first view of an image
        FitAlways,
    };

    QPointF Offset() const;
    void Layout();
    void Refit();

    QImage m_image;
    QImage m_preview;
    QImage m_scaled; // m_image (or the preview) at the zoom, when that is below 1
    double m_zoom = 1;
    Fit m_fit = ShrinkToFit;
};
