#pragma once

/// \file
/// Gradient stops, their stream operators and their conversions to and from Qt's stops.

#include "OVCoreExport.h"

#include <QColor>
#include <QList>
#include <QPair>
#include <QVector>

class QDataStream;

/// One stop of a colour gradient as the editor stores it.
///
/// A stop has a position and a colour, where the colour may instead be bound to the
/// application's current background or foreground colour, or marked as a user colour that its
/// owner supplies.
class OVCORE_EXPORT OVGradientStop
{
public:
    /// A black stop at position 0 with no flags set.
    OVGradientStop();
    /// A stop with the given position, stored colour and flags.
    OVGradientStop(double position, const QColor& color, bool background, bool foreground, bool userColor);
    /// A copy of \a other.
    OVGradientStop(const OVGradientStop& other);
    /// Takes the position, colour and flags of \a other.
    OVGradientStop& operator=(const OVGradientStop& other);

    /// The stop's position, 0 at the gradient's start and 1 at its end.
    double GetPosition() const;
    /// Sets the stop's position.
    void SetPosition(double position);
    /// The effective colour: the application's background, else its foreground, else black for
    /// a user colour, else the stored colour.
    QColor GetColor();
    /// Sets the stored colour; the flags stay as they are.
    void SetColor(const QColor& color);
    /// Whether the stop takes the application's background colour.
    bool IsBackground() const;
    /// Binds the stop to the application's background colour, or not.
    void SetBackground(bool background);
    /// Whether the stop takes the application's foreground colour.
    bool IsForeground() const;
    /// Binds the stop to the application's foreground colour, or not.
    void SetForeground(bool foreground);
    /// Whether the stop's colour is a user colour that its owner supplies.
    bool IsUserColor() const;
    /// Marks the stop's colour as a user colour, or not.
    void SetUserColor(bool userColor);

    /// Writes the position, the colour and the three flags, with the stream's own byte
    /// order, floating-point precision and version.
    QDataStream& Write(QDataStream& stream) const;
    /// Reads what Write() wrote, with the stream's own settings.
    QDataStream& Read(QDataStream& stream);

private:
    double m_position;
    QColor m_color;
    bool m_background;
    bool m_foreground;
    bool m_userColor;
};

/// Writes a stop to a stream (OVGradientStop::Write()).
OVCORE_EXPORT QDataStream& operator<<(QDataStream& stream, const OVGradientStop& stop);
/// Reads a stop from a stream (OVGradientStop::Read()).
OVCORE_EXPORT QDataStream& operator>>(QDataStream& stream, OVGradientStop& stop);

/// Stops with the pairs' positions and colours and no flags set.
OVCORE_EXPORT QList<OVGradientStop> FromGradientStops(const QVector<QPair<double, QColor>>& stops);
/// Position and effective colour of each stop, bound colours resolved now.
OVCORE_EXPORT QVector<QPair<double, QColor>> ToGradientStops(const QList<OVGradientStop>& stops);
/// The mirrored gradient: the stops from last to first at 1 - position.
OVCORE_EXPORT QVector<QPair<double, QColor>> ToReversedStops(const QList<OVGradientStop>& stops);
