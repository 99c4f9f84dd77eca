#pragma once

#include "OVCoreExport.h"

#include <QColor>
#include <QList>
#include <QPair>
#include <QVector>

class QDataStream;

// One stop of a colour gradient as the editor stores it: a position and a colour, where the
// colour may instead be bound to the application's current background or foreground colour,
// or marked as a user colour that its owner supplies.
class OVCORE_EXPORT OVGradientStop
{
public:
    OVGradientStop();
    OVGradientStop(double position, const QColor& color, bool background, bool foreground, bool userColor);
    OVGradientStop(const OVGradientStop& other);
    OVGradientStop& operator=(const OVGradientStop& other);

    double GetPosition() const;
    void SetPosition(double position);
    // The effective colour: the application's background, else its foreground, else black for
    // a user colour, else the stored colour.
    QColor GetColor();
    void SetColor(const QColor& color);
    bool IsBackground() const;
    void SetBackground(bool background);
    bool IsForeground() const;
    void SetForeground(bool foreground);
    bool IsUserColor() const;
    void SetUserColor(bool userColor);

    // Position, colour and the three flags, with the stream's own byte order, floating-point
    // precision and version.
    QDataStream& Write(QDataStream& stream) const;
    QDataStream& Read(QDataStream& stream);

private:
    double m_position;
    QColor m_color;
    bool m_background;
    bool m_foreground;
    bool m_userColor;
};

OVCORE_EXPORT QDataStream& operator<<(QDataStream& stream, const OVGradientStop& stop);
OVCORE_EXPORT QDataStream& operator>>(QDataStream& stream, OVGradientStop& stop);

// Stops with the pairs' positions and colours and no flags set.
OVCORE_EXPORT QList<OVGradientStop> FromGradientStops(const QVector<QPair<double, QColor>>& stops);
// Position and effective colour of each stop, bound colours resolved now.
OVCORE_EXPORT QVector<QPair<double, QColor>> ToGradientStops(const QList<OVGradientStop>& stops);
// The mirrored gradient: the stops from last to first at 1 - position.
OVCORE_EXPORT QVector<QPair<double, QColor>> ToReversedStops(const QList<OVGradientStop>& stops);
