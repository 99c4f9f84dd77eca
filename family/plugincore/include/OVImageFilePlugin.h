#pragma once

#include "OVPlugin.h"

#include <QStringList>

class OVImageFileReader;
class OVImageFileWriter;

// A plug-in that reads and/or writes image file formats. Formats are file suffixes without
// the dot, in lower case ("jpg", "png"). Readers and writers are made by the plug-in and
// handed back to it for disposal.
class OVPLUGINCORE_EXPORT OVImageFilePlugin : public OVPlugin
{
    Q_OBJECT
public:
    enum FormatCapability
    {
        NoCapability = 0,
        CanRead = 1,
        CanWrite = 2
    };
    Q_DECLARE_FLAGS(FormatCapabilities, FormatCapability)

    explicit OVImageFilePlugin(QObject* parent = nullptr);
    ~OVImageFilePlugin() override;

    int GetType() const override;

    // The host calls these through the vtable in this order, right after the four of
    // OVPlugin; new virtual operations go at the end.
    virtual QStringList GetReaderUIDs() const = 0;
    virtual QString GetReaderName(const QString& uid) const;
    virtual QStringList GetWriterUIDs() const = 0;
    virtual QString GetWriterName(const QString& uid) const;
    virtual QStringList GetFormats() const = 0;
    // Format groups: a group UID, a display name and the formats the plug-in puts in it.
    virtual QStringList GetGroups() const;
    virtual QString GetGroupName(const QString& groupUID) const;
    virtual QStringList GetGroupFormats(const QString& groupUID) const;
    virtual FormatCapabilities GetFormatCapabilities(const QString& format) const = 0;

    virtual OVImageFileReader* CreateReader(const QString& format) = 0;
    virtual OVImageFileReader* CreateReaderByUID(const QString& uid) = 0;
    virtual OVImageFileWriter* CreateWriter(const QString& format) = 0;
    virtual OVImageFileWriter* CreateWriterByUID(const QString& uid) = 0;
    virtual void ReleaseReader(OVImageFileReader* reader) = 0;
    virtual void ReleaseWriter(OVImageFileWriter* writer) = 0;

    // Descriptive information for the host's user interface.
    virtual QString GetFormatName(const QString& format) const;
    virtual QString GetDescription() const;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OVImageFilePlugin::FormatCapabilities)
