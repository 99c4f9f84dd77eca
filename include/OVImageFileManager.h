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

// The process-wide registry of image file plug-ins. From what the registered plug-ins declare it
// knows which formats (lower-case file suffixes) can be read and written, which plug-in serves
// each format (the one registered last), which reader and writer UIDs exist and which named
// format groups exist. It builds the file-dialog filters, creates readers and writers, keeps a
// pool of ready-made readers for worker threads, and carries the host's open and save hooks.
//
// Everything runs on the thread that owns the instance, except AcquireReader() and
// ReleaseAcquiredReader(), which any thread may call while the pool exists.
class OVCORE_EXPORT OVImageFileManager : public QObject
{
    Q_OBJECT
public:
    // The built-in group that collects every readable (or writable) format of every plug-in.
    static constexpr const char* AllGroupUID = "{00000000-0000-0000-0000-000000000001}";

    // The host's way of opening a file; a hook stops a batch by setting *flag to false.
    using OpenHook = bool (*)(const QString& path, bool* flag, void* data);
    // The host's way of saving a document.
    using SaveHook = bool (*)(KXDocumentInterface* document, void* data);

    static void InitInstance();
    static OVImageFileManager* GetInstance();
    static void ReleaseInstance();

    // False only for a null plug-in; registering a plug-in twice leaves it as it is.
    bool Register(OVImageFilePlugin* plugin);
    // False when the plug-in is not registered.
    bool Unregister(OVImageFilePlugin* plugin);

    // Format arguments are lower-cased; UIDs are compared exactly.
    OVImageFilePlugin* GetPluginForRead(const QString& format) const;
    OVImageFilePlugin* GetPluginForWrite(const QString& format) const;
    QStringList GetSupportedReadFormats() const;
    QStringList GetSupportedWriteFormats() const;
    // The read side lists the All group; the write side never does.
    QStringList GetSupportedReadGroups() const;
    QStringList GetSupportedWriteGroups() const;
    QString GetGroupName(const QString& groupUID) const;
    QStringList GetGroupReadFormats(const QString& groupUID) const;
    QStringList GetGroupWriteFormats(const QString& groupUID) const;
    // The read list of the group if it has one, else its write list.
    QStringList GetGroupFormats(const QString& groupUID) const;

    // Name filters for Qt's file dialogs, one entry per group; empty without an instance.
    static QString GetFilterForRead();
    static QString GetFilterForWrite();

    // Readers and writers come from the plug-in that serves the format (or owns the UID) and
    // stay alive until they are given back with ReleaseReader() or ReleaseWriter().
    OVImageFileReader* CreateReader(const QString& format);
    OVImageFileReader* CreateReaderByUID(const QString& uid);
    OVImageFileWriter* CreateWriter(const QString& format);
    OVImageFileWriter* CreateWriterByUID(const QString& uid);
    void ReleaseReader(OVImageFileReader* reader);
    void ReleaseWriter(OVImageFileWriter* writer);

    // The readers pool: built once all image file plug-ins are registered, released once
    // before they are unloaded. Each pool entry holds QThread::idealThreadCount() readers and
    // serves every format its readers declare.
    static void InitReadersPool();
    static void ReleaseReadersPool();
    // Borrows an idle reader of the format's entry, waiting while none is idle; null when
    // the format has no entry.
    OVImageFileReader* AcquireReader(const QString& format);
    void ReleaseAcquiredReader(OVImageFileReader* reader);

    // Hooks: a null function clears one.
    void Register(OpenHook hook, void* data);
    void Register(SaveHook hook, void* data);
    bool Open(const QString& path, bool* flag);
    void Open(const QStringList& paths);
    bool Save(KXDocumentInterface* document);

signals:
    // The set of named groups changed: a group got its name, or a group other than All
    // became empty.
    void SupportedGroupsChanged();
    // The format list of one group changed.
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
