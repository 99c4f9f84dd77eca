#include "OVGradientStop.h"

#include "OVApplication.h"

#include <QDataStream>

#include <cstring>

namespace {

// Qt's stream operator takes a colour's model (RGB, HSV, CMYK, ...) from the stream without
// checking it, and a QColor holding a model Qt does not know cannot even be copied safely. Such a
// colour is read as invalid. The model is the int a QColor starts with.
QColor Sane(const QColor& color)
{
    static_assert(sizeof(QColor::Rgb) == sizeof(int), "a QColor starts with its model, an int");
    int model = 0;
    std::memcpy(&model, static_cast<const void*>(&color), sizeof model);
    return model >= QColor::Invalid && model <= QColor::ExtendedRgb ? color : QColor();
}

} // namespace

OVGradientStop::OVGradientStop()
    : OVGradientStop(0.0, Qt::black, false, false, false)
{}

OVGradientStop::OVGradientStop(double position, const QColor& color, bool background, bool foreground,
                               bool userColor)
    : m_position(position)
    , m_color(color)
    , m_background(background)
    , m_foreground(foreground)
    , m_userColor(userColor)
{}

OVGradientStop::OVGradientStop(const OVGradientStop& other) = default;
OVGradientStop& OVGradientStop::operator=(const OVGradientStop& other) = default;

double OVGradientStop::GetPosition() const
{
    return m_position;
}

void OVGradientStop::SetPosition(double position)
{
    m_position = position;
}

QColor OVGradientStop::GetColor()
{
    if (m_background)
        return OVApplication::GetBackground();
    if (m_foreground)
        return OVApplication::GetForeground();
    // Whoever owns the user colour supplies it; the stored colour does not stand in for it.
    if (m_userColor)
        return QColor(Qt::black);
    return m_color;
}

void OVGradientStop::SetColor(const QColor& color)
{
    m_color = color;
}

bool OVGradientStop::IsBackground() const
{
    return m_background;
}

void OVGradientStop::SetBackground(bool background)
{
    m_background = background;
}

bool OVGradientStop::IsForeground() const
{
    return m_foreground;
}

void OVGradientStop::SetForeground(bool foreground)
{
    m_foreground = foreground;
}

bool OVGradientStop::IsUserColor() const
{
    return m_userColor;
}

void OVGradientStop::SetUserColor(bool userColor)
{
    m_userColor = userColor;
}

QDataStream& OVGradientStop::Write(QDataStream& stream) const
{
    return stream << m_position << m_color << m_background << m_foreground << m_userColor;
}

QDataStream& OVGradientStop::Read(QDataStream& stream)
{
    double position = 0.0;
    QColor color;
    stream >> position >> color >> m_background >> m_foreground >> m_userColor;
    m_position = position;
    m_color = Sane(color);
    return stream;
}

QDataStream& operator<<(QDataStream& stream, const OVGradientStop& stop)
{
    return stop.Write(stream);
}

QDataStream& operator>>(QDataStream& stream, OVGradientStop& stop)
{
    return stop.Read(stream);
}

QList<OVGradientStop> FromGradientStops(const QVector<QPair<double, QColor>>& stops)
{
    QList<OVGradientStop> result;
    result.reserve(stops.size());
    for (const auto& stop : stops)
        result.append(OVGradientStop(stop.first, stop.second, false, false, false));
    return result;
}

QVector<QPair<double, QColor>> ToGradientStops(const QList<OVGradientStop>& stops)
{
    QVector<QPair<double, QColor>> result;
    result.reserve(stops.size());
    for (OVGradientStop stop : stops)
        result.append({stop.GetPosition(), stop.GetColor()});
    return result;
}

QVector<QPair<double, QColor>> ToReversedStops(const QList<OVGradientStop>& stops)
{
    QVector<QPair<double, QColor>> result;
    result.reserve(stops.size());
    for (auto it = stops.crbegin(); it != stops.crend(); ++it) {
        OVGradientStop stop = *it;
        result.append({1.0 - stop.GetPosition(), stop.GetColor()});
    }
    return result;
}
