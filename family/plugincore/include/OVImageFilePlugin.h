#pragma once

#include "OVPlugin.h"

#include <QStringList>

class OVImageFileReader;
class OVImageFileWriter;

/// A plug-in that reads and/or writes image file formats.
///
/// Formats are file suffixes without the dot, in lower case ("jpg", "png"). Readers and
/// writers are made by the plug-in and handed back to it for disposal. The plug-in loader
/// registers every image file plug-in of a library with OVImageFileManager, which then asks it
/// for readers and writers; for its readers pool it asks for several readers of each format at
/// once (one per processor thread), which worker threads use side by side, so each reader must
/// stand on its own.
class OVPLUGINCORE_EXPORT OVImageFilePlugin : public OVPlugin
{
    Q_OBJECT
public:
    /// What the plug-in can do with a format.
    enum FormatCapability
    {
        NoCapability = 0, ///< Neither read nor write.
        CanRead = 1,      ///< The plug-in reads the format.
        CanWrite = 2      ///< The plug-in writes the format.
    };
    Q_DECLARE_FLAGS(FormatCapabilities, FormatCapability)

    /// An image file plug-in with the given parent.
    explicit OVImageFilePlugin(QObject* parent = nullptr);
    ~OVImageFilePlugin() override;

    /// OVPlugin::ImageFileType.
    int GetType() const override;

    /// The UIDs of the readers the plug-in makes. The host calls these virtual operations in
    /// this order, right after the four of OVPlugin; new ones go at the end.
    virtual QStringList GetReaderUIDs() const = 0;
    /// The display name of a reader; the UID unless overridden.
    virtual QString GetReaderName(const QString& uid) const;
    /// The UIDs of the writers the plug-in makes.
    virtual QStringList GetWriterUIDs() const = 0;
    /// The display name of a writer; the UID unless overridden.
    virtual QString GetWriterName(const QString& uid) const;
    /// Every format the plug-in reads or writes.
    virtual QStringList GetFormats() const = 0;
    /// The UIDs of the format groups the plug-in puts formats in (none unless overridden).
    virtual QStringList GetGroups() const;
    /// The display name of a group, used in file-dialog filters.
    virtual QString GetGroupName(const QString& groupUID) const;
    /// The formats the plug-in puts in a group.
    virtual QStringList GetGroupFormats(const QString& groupUID) const;
    /// Whether the plug-in reads and/or writes a format.
    virtual FormatCapabilities GetFormatCapabilities(const QString& format) const = 0;

    /// A new reader for a format, or null; given back through ReleaseReader().
    virtual OVImageFileReader* CreateReader(const QString& format) = 0;
    /// A new reader with the given reader UID, or null; given back through ReleaseReader().
    virtual OVImageFileReader* CreateReaderByUID(const QString& uid) = 0;
    /// A new writer for a format, or null; given back through ReleaseWriter().
    virtual OVImageFileWriter* CreateWriter(const QString& format) = 0;
    /// A new writer with the given writer UID, or null; given back through ReleaseWriter().
    virtual OVImageFileWriter* CreateWriterByUID(const QString& uid) = 0;
    /// Disposes of a reader this plug-in made.
    virtual void ReleaseReader(OVImageFileReader* reader) = 0;
    /// Disposes of a writer this plug-in made.
    virtual void ReleaseWriter(OVImageFileWriter* writer) = 0;

    /// The display name of a format; the format in upper case unless overridden.
    virtual QString GetFormatName(const QString& format) const;
    /// A description of the plug-in for the host's user interface; empty unless overridden.
    virtual QString GetDescription() const;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(OVImageFilePlugin::FormatCapabilities)
