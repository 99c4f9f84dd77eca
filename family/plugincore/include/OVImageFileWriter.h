#pragma once

#include "OVPluginCoreExport.h"

#include <QImage>
#include <QObject>
#include <QStringList>

// Writes image files of the formats it declares.
class OVPLUGINCORE_EXPORT OVImageFileWriter : public QObject
{
    Q_OBJECT
public:
    explicit OVImageFileWriter(QObject* parent = nullptr);
    ~OVImageFileWriter() override;

    virtual QString GetUID() const = 0;
    // Encodes image into the file; false with GetErrorString() set on failure.
    virtual bool Write(const QString& path, const QImage& image) = 0;
    // The formats (lower-case suffixes) this writer handles.
    virtual QStringList GetFormats() const = 0;
    // Quality for lossy formats, 0 to 100; -1 leaves the format's default.
    virtual void SetQuality(int quality);
    virtual QString GetErrorString() const;
};
