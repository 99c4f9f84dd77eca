#pragma once

#include <QImage>
#include <QObject>
#include <QPointF>

// The view a host shows one image in, as the sample tools see it. Points are in image
// coordinates (pixels of the image, whatever the zoom); the zoom is a scale, 1 for actual size.
class OVSampleCanvas
{
public:
    virtual ~OVSampleCanvas() = default;

    virtual const QImage& Image() const = 0;
    virtual double Zoom() const = 0;
    // Sets the zoom (clamped by the view) and keeps anchor where it is on the screen.
    virtual void SetZoom(double zoom, const QPointF& anchor) = 0;
    // The image point at the middle of the view.
    virtual QPointF Centre() const = 0;
    // Scrolls the view by a distance in image pixels.
    virtual void ScrollBy(const QPointF& distance) = 0;
};

// A tool that works on a canvas: the host hands it the mouse presses and drags over the image of
// the tool in effect, and the canvas shown now whenever that or its zoom changes.
class OVSampleCanvasTool
{
public:
    virtual ~OVSampleCanvasTool() = default;

    virtual void Press(OVSampleCanvas& canvas, const QPointF& point, Qt::KeyboardModifiers modifiers) = 0;
    virtual void Drag(OVSampleCanvas& canvas, const QPointF& point, Qt::KeyboardModifiers modifiers) = 0;
    // The canvas shown now, or null; the tool forgets any other it was shown.
    virtual void Show(OVSampleCanvas* canvas) = 0;
};

#define OVSampleCanvasTool_iid "Orvelin.Sample.CanvasTool/1.0"
Q_DECLARE_INTERFACE(OVSampleCanvasTool, OVSampleCanvasTool_iid)
