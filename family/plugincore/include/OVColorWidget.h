#pragma once

#include "OVPluginCoreExport.h"

#include <QColor>
#include <QWidget>

// The host's colour chooser, shared with plug-ins through the application object.
class OVPLUGINCORE_EXPORT OVColorWidget : public QWidget
{
    Q_OBJECT
public:
    explicit OVColorWidget(QWidget* parent = nullptr);
    ~OVColorWidget() override;

    QColor GetColor() const;

public slots:
    void SetColor(const QColor& color);

signals:
    void ColorChanged(const QColor& color);

private:
    QColor m_color;
};
