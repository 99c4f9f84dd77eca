#pragma once

#include "OVPluginCoreExport.h"

#include <QImage>
#include <QObject>
#include <QStringList>

/// Writes image files of the formats it declares.
class OVPLUGINCORE_EXPORT OVImageFileWriter : public QObject
{
    Q_OBJECT
public:
    /// A writer with the given parent.
    explicit OVImageFileWriter(QObject* parent = nullptr);
    ~OVImageFileWriter() override;

    /// The writer's UID, one of its plug-in's OVImageFilePlugin::GetWriterUIDs().
    virtual QString GetUID() const = 0;
    /// Encodes image into the file; false with GetErrorString() set on failure.
    virtual bool Write(const QString& path, const QImage& image) = 0;
    /// The formats (lower-case suffixes) this writer handles.
    virtual QStringList GetFormats() const = 0;
    /// Quality for lossy formats, 0 to 100; -1 leaves the format's default. Ignored unless
    /// overridden.
    virtual void SetQuality(int quality);
    /// Why the last Write() failed; empty unless overridden.
    virtual QString GetErrorString() const;
};
