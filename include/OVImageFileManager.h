#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

class KXDocumentInterface;
class OVImageFilePlugin;
class OVImageFileReader;
class OVImageFileWriter;
class OVImageFileManagerPrivate;

/// The process-wide registry of image file plug-ins.
///
/// From what the registered plug-ins declare it knows which formats (lower-case file suffixes)
/// can be read and written, which plug-in serves each format (the one registered last), which
/// reader and writer UIDs exist and which named format groups exist. It builds the file-dialog
/// filters, creates readers and writers, keeps a pool of ready-made readers for worker threads,
/// and carries the host's open and save hooks. The plug-in loader registers the image file
/// plug-ins of every library it loads, and unregisters them when it unloads the library.
///
/// Everything runs on the thread that owns the instance, except AcquireReader() and
/// ReleaseAcquiredReader(), which any thread may call while the pool exists.
class OVCORE_EXPORT OVImageFileManager : public QObject
{
    Q_OBJECT
public:
    /// The built-in group that collects every readable (or writable) format of every plug-in.
    static constexpr const char* AllGroupUID = "{00000000-0000-0000-0000-000000000001}";

    /// The host's way of opening a file; a hook stops a batch by setting *flag to false.
    using OpenHook = bool (*)(const QString& path, bool* flag, void* data);
    /// The host's way of saving a document.
    using SaveHook = bool (*)(KXDocumentInterface* document, void* data);

    /// Creates the registry; a second call does nothing.
    static void InitInstance();
    /// The registry, or null before InitInstance() and after ReleaseInstance().
    static OVImageFileManager* GetInstance();
    /// Deletes the registry.
    static void ReleaseInstance();

    /// Enters a plug-in's formats, readers, writers and groups; the plug-in registered last
    /// serves a format. False only for a null plug-in; registering a plug-in twice leaves it
    /// as it is.
    bool Register(OVImageFilePlugin* plugin);
    /// Removes a plug-in and everything it declared; false when it is not registered.
    bool Unregister(OVImageFilePlugin* plugin);

    /// The plug-in that reads the format (lower-cased first), or null.
    OVImageFilePlugin* GetPluginForRead(const QString& format) const;
    /// The plug-in that writes the format (lower-cased first), or null.
    OVImageFilePlugin* GetPluginForWrite(const QString& format) const;
    /// Every readable format, sorted.
    QStringList GetSupportedReadFormats() const;
    /// Every writable format, sorted.
    QStringList GetSupportedWriteFormats() const;
    /// The UIDs of the groups with readable formats, the All group included.
    QStringList GetSupportedReadGroups() const;
    /// The UIDs of the groups with writable formats; the All group is never listed here.
    QStringList GetSupportedWriteGroups() const;
    /// A group's display name, or "Unknown" (translated) when no plug-in named it.
    QString GetGroupName(const QString& groupUID) const;
    /// The readable formats of a group, or an empty list.
    QStringList GetGroupReadFormats(const QString& groupUID) const;
    /// The writable formats of a group, or an empty list.
    QStringList GetGroupWriteFormats(const QString& groupUID) const;
    /// The read list of the group if it has one, else its write list.
    QStringList GetGroupFormats(const QString& groupUID) const;

    /// The name filter for an open dialog (QFileDialog), one entry per readable group; empty
    /// without an instance.
    static QString GetFilterForRead();
    /// The name filter for a save dialog, one entry per writable group; empty without an
    /// instance.
    static QString GetFilterForWrite();

    /// A new reader for the format from the plug-in that serves it, or null. It stays alive
    /// until it is given back with ReleaseReader().
    OVImageFileReader* CreateReader(const QString& format);
    /// A new reader from the plug-in that owns the reader UID, or null.
    OVImageFileReader* CreateReaderByUID(const QString& uid);
    /// A new writer for the format from the plug-in that serves it, or null. It stays alive
    /// until it is given back with ReleaseWriter().
    OVImageFileWriter* CreateWriter(const QString& format);
    /// A new writer from the plug-in that owns the writer UID, or null.
    OVImageFileWriter* CreateWriterByUID(const QString& uid);
    /// Forgets a reader made here and hands it back to its plug-in.
    void ReleaseReader(OVImageFileReader* reader);
    /// Forgets a writer made here and hands it back to its plug-in.
    void ReleaseWriter(OVImageFileWriter* writer);

    /// Builds the readers pool, once all image file plug-ins are registered.
    ///
    /// Each pool entry holds QThread::idealThreadCount() readers, asked of the plug-in that
    /// serves the format one after the other, and serves every format its readers declare.
    static void InitReadersPool();
    /// Hands every pooled reader back to its plug-in and deletes the pool, once, before the
    /// plug-ins are unloaded.
    static void ReleaseReadersPool();
    /// Borrows an idle reader of the format's pool entry, waiting while none is idle; null
    /// when the format has no entry. Any thread may call it.
    OVImageFileReader* AcquireReader(const QString& format);
    /// Returns a borrowed reader to its pool entry. Any thread may call it.
    void ReleaseAcquiredReader(OVImageFileReader* reader);

    /// Installs the host's open hook and the data passed to it; a null function clears it.
    void Register(OpenHook hook, void* data);
    /// Installs the host's save hook and the data passed to it; a null function clears it.
    void Register(SaveHook hook, void* data);
    /// Opens one file through the open hook; false, with *flag cleared, without a hook.
    bool Open(const QString& path, bool* flag);
    /// Opens files one after the other through the open hook, until the hook clears the flag.
    void Open(const QStringList& paths);
    /// Saves a document through the save hook; false without a hook.
    bool Save(KXDocumentInterface* document);

signals:
    /// The set of named groups changed: a group got its name, or a group other than All
    /// became empty.
    void SupportedGroupsChanged();
    /// The format list of one group changed.
    void SupportedGroupChanged(const QString& groupUID);

private slots:
    void OnPluginDestroyed(QObject* object);
    void OnReaderDestroyed(QObject* object);
    void OnWriterDestroyed(QObject* object);

private:
    OVImageFileManager();
    ~OVImageFileManager() override;
    Q_DISABLE_COPY(OVImageFileManager)

    OVImageFileManagerPrivate* const d;
};
