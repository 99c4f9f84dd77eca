#pragma once

#include "OVPluginCoreExport.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QStringList>

/// Reads image files of the formats it declares. A reader is used by one thread at a time.
class OVPLUGINCORE_EXPORT OVImageFileReader : public QObject
{
    Q_OBJECT
public:
    /// A reader with the given parent.
    explicit OVImageFileReader(QObject* parent = nullptr);
    ~OVImageFileReader() override;

    /// The reader's UID, one of its plug-in's OVImageFilePlugin::GetReaderUIDs().
    virtual QString GetUID() const = 0;
    /// Decodes the file into image; false with GetErrorString() set on failure.
    virtual bool Read(const QString& path, QImage& image) = 0;
    /// The formats (lower-case suffixes) this reader handles.
    virtual QStringList GetFormats() const = 0;
    /// The pixel size of the image in the file, without decoding it where the format allows;
    /// by default the size of the decoded image, or an invalid size.
    virtual QSize ReadSize(const QString& path);
    /// Why the last Read() failed; empty unless overridden.
    virtual QString GetErrorString() const;
};
