#include "OVDemoCanvas.h"

#include "OVActivateAction.h"
#include "OVToolGroupManager.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

namespace {

const double kMinZoom = 0.01;
const double kMaxZoom = 32;

OVSampleCanvasTool* ToolInEffect()
{
    return qobject_cast<OVSampleCanvasTool*>(OVToolGroupManager::GetImplicitAction());
}

} // namespace

OVDemoCanvas::OVDemoCanvas(const QImage& image, QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_image(image)
{
    viewport()->setCursor(Qt::CrossCursor);
    Layout();
}

void OVDemoCanvas::SetImage(const QImage& image)
{
    const bool resized = image.size() != m_image.size();
    m_image = image;
    m_scaled = QImage();
    if (resized)
        Refit();
    Layout();
}

void OVDemoCanvas::SetPreview(const QImage& preview)
{
    m_preview = preview;
    m_scaled = QImage();
    viewport()->update();
}

void OVDemoCanvas::SetZoom(double zoom, const QPointF& anchor)
{
    zoom = qBound(kMinZoom, zoom, kMaxZoom);
    m_fit = NoFit;
    if (qFuzzyCompare(zoom, m_zoom))
        return;
    const QPointF onScreen = anchor * m_zoom + Offset();
    m_zoom = zoom;
    m_scaled = QImage();
    Layout();
    // Keep the anchor under the same viewport point where the view can scroll.
    const QPointF target = anchor * m_zoom - onScreen;
    horizontalScrollBar()->setValue(qRound(target.x()));
    verticalScrollBar()->setValue(qRound(target.y()));
    emit ZoomChanged(m_zoom);
}

QPointF OVDemoCanvas::Centre() const
{
    return ToImage(QRectF(viewport()->rect()).center());
}

void OVDemoCanvas::ScrollBy(const QPointF& distance)
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(distance.x() * m_zoom));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(distance.y() * m_zoom));
}

void OVDemoCanvas::FitToWindow()
{
    m_fit = FitAlways;
    Refit();
}

void OVDemoCanvas::ActualSize()
{
    SetZoom(1, Centre());
}

QPointF OVDemoCanvas::ToImage(const QPointF& position) const
{
    return (position - Offset()) / m_zoom;
}

QPointF OVDemoCanvas::Offset() const
{
    // Centred where the image is smaller than the view, else scrolled.
    const QSizeF shown = QSizeF(m_image.size()) * m_zoom;
    const QSize view = viewport()->size();
    const double x =
        shown.width() < view.width() ? (view.width() - shown.width()) / 2 : -horizontalScrollBar()->value();
    const double y =
        shown.height() < view.height() ? (view.height() - shown.height()) / 2 : -verticalScrollBar()->value();
    return QPointF(std::floor(x), std::floor(y));
}

void OVDemoCanvas::Layout()
{
    const QSize shown = (QSizeF(m_image.size()) * m_zoom).toSize();
    const QSize view = viewport()->size();
    horizontalScrollBar()->setRange(0, qMax(0, shown.width() - view.width()));
    verticalScrollBar()->setRange(0, qMax(0, shown.height() - view.height()));
    horizontalScrollBar()->setPageStep(view.width());
    verticalScrollBar()->setPageStep(view.height());
    viewport()->update();
}

void OVDemoCanvas::Refit()
{
    const QSize view = viewport()->size();
    if (m_fit == NoFit || m_image.isNull() || view.isEmpty())
        return;
    double zoom = qMin(double(view.width()) / m_image.width(), double(view.height()) / m_image.height());
    if (m_fit == ShrinkToFit)
        zoom = qMin(zoom, 1.0);
    zoom = qBound(kMinZoom, zoom, kMaxZoom);
    if (!qFuzzyCompare(zoom, m_zoom)) {
        m_zoom = zoom;
        m_scaled = QImage();
        emit ZoomChanged(m_zoom);
    }
    Layout();
}

void OVDemoCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    const QImage& source = m_preview.isNull() ? m_image : m_preview;
    if (source.isNull())
        return;
    const QPointF offset = Offset();
    const QRectF shown(offset, QSizeF(m_image.size()) * m_zoom);
    if (source.size() != m_image.size()) {
        // A preview, about the size of the view: drawn over the image's place.
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(shown, source);
        return;
    }
    if (m_zoom < 1) {
        // Smaller than the image: scaled once per zoom, smoothly.
        if (m_scaled.isNull())
            m_scaled = source.scaled(shown.size().toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        painter.drawImage(shown.topLeft(), m_scaled);
        return;
    }
    // At or above actual size: only the part in view, pixel for pixel.
    const QRectF visible =
        QRectF(ToImage(QPointF(0, 0)), ToImage(QPointF(viewport()->rect().bottomRight()) + QPointF(1, 1)))
            .intersected(QRectF(source.rect()));
    const QRect pixels = visible.toAlignedRect();
    painter.drawImage(QRectF(offset + QPointF(pixels.topLeft()) * m_zoom, QSizeF(pixels.size()) * m_zoom),
                      source, pixels);
}

void OVDemoCanvas::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    Refit();
    Layout();
}

void OVDemoCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (OVSampleCanvasTool* tool = ToolInEffect())
        tool->Press(*this, ToImage(event->localPos()), event->modifiers());
}

void OVDemoCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton))
        return;
    if (OVSampleCanvasTool* tool = ToolInEffect())
        tool->Drag(*this, ToImage(event->localPos()), event->modifiers());
}

void OVDemoCanvas::scrollContentsBy(int, int)
{
    viewport()->update();
}
