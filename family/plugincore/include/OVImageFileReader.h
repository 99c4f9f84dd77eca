#pragma once

#include "OVPluginCoreExport.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QStringList>

// Reads image files of the formats it declares. A reader is used by one thread at a time.
class OVPLUGINCORE_EXPORT OVImageFileReader : public QObject
{
    Q_OBJECT
public:
    explicit OVImageFileReader(QObject* parent = nullptr);
    ~OVImageFileReader() override;

    virtual QString GetUID() const = 0;
    // Decodes the file into image; false with GetErrorString() set on failure.
    virtual bool Read(const QString& path, QImage& image) = 0;
    // The formats (lower-case suffixes) this reader handles.
    virtual QStringList GetFormats() const = 0;
    // The pixel size of the image in the file, without decoding it where the format allows.
    virtual QSize ReadSize(const QString& path);
    virtual QString GetErrorString() const;
};
