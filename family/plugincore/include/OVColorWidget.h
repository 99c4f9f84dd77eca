#pragma once

#include "OVPluginCoreExport.h"

#include <QColor>
#include <QWidget>

/// The host's colour chooser, shared with plug-ins through the application object.
class OVPLUGINCORE_EXPORT OVColorWidget : public QWidget
{
    Q_OBJECT
public:
    /// A colour chooser with an invalid colour.
    explicit OVColorWidget(QWidget* parent = nullptr);
    ~OVColorWidget() override;

    /// The chosen colour.
    QColor GetColor() const;

public slots:
    /// Sets the chosen colour and announces a change with ColorChanged().
    void SetColor(const QColor& color);

signals:
    /// The chosen colour changed.
    void ColorChanged(const QColor& color);

private:
    QColor m_color;
};
