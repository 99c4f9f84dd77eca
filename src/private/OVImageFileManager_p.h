#pragma once

#include "OVImageFileManager.h"
#include "OVImageFilePlugin.h"
#include "private/OVAutotestExport_p.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QPointer>
#include <QSemaphore>
#include <QSet>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

// One entry of the readers pool: readers that serve one set of formats, borrowed and returned
// by worker threads. The semaphore holds one permit per idle reader, so a borrower waits while
// every reader is out; the mutex guards the idle stack and the count.
struct ReaderPoolEntry
{
    explicit ReaderPoolEntry(int n)
        : available(n)
        , count(n)
    {}

    std::vector<QObject*> readers; // idle readers; the last one returned is the next one lent
    QSemaphore available;
    QMutex lock;
    int count; // readers that belong to the entry, idle or borrowed
    // How often each reader is out with a borrower. A reader returned more often than it was
    // lent stands on the idle stack more than once, so neither the stack nor the permits tell
    // whether a thread still holds one; these counts do.
    std::vector<std::pair<QObject*, int>> lent;

    std::vector<std::pair<QObject*, int>>::iterator Lent(QObject* reader)
    {
        return std::find_if(lent.begin(), lent.end(),
                            [reader](const auto& out) { return out.first == reader; });
    }
};

class OVImageFileManagerPrivate
{
public:
    explicit OVImageFileManagerPrivate(OVImageFileManager* owner);
    ~OVImageFileManagerPrivate();

    OVImageFileManagerPrivate(const OVImageFileManagerPrivate&) = delete;
    OVImageFileManagerPrivate& operator=(const OVImageFileManagerPrivate&) = delete;

    // What a registered plug-in holds on one side (read or write): the UIDs it owns and the
    // formats whose plug-in lists it was put in. Taking a plug-in out then touches only
    // those, however many formats and UIDs the registry knows.
    struct SideEntries
    {
        QStringList uids;
        QStringList formats;
    };

    // The plug-in that made a live reader or writer: its pointer as recorded, which names it
    // even while it is being destroyed, and a guard that reads null once it is gone.
    struct Maker
    {
        QObject* plugin;
        QPointer<QObject> alive;
    };

    // The read side and the write side of the registry run the same procedures on different
    // tables; a Side names the tables and the plug-in operations of one of them.
    struct Side
    {
        QMap<QString, QStringList>& groups;
        bool& allSorted; // the All group's list is in ascending order
        QMap<QString, QObject*>& uids;
        QMap<QString, QList<QObject*>>& plugins;
        QHash<QObject*, SideEntries>& entries;
        QMap<QObject*, Maker>& live;
        QStringList (OVImageFilePlugin::*uidList)() const;
        OVImageFilePlugin::FormatCapability capability;
        int logLine;             // of the duplicate-UID line
        const char* onDestroyed; // slot of the owner that follows a live reader or writer
        bool pooled;             // whether its live objects may sit in the readers pool
    };
    Side ReadSide();
    Side WriteSide();

    bool Register(OVImageFilePlugin* plugin);
    bool Unregister(OVImageFilePlugin* plugin);
    void OnPluginDestroyed(QObject* object);

    // The plug-in that serves a format (lower-cased here), or null.
    static OVImageFilePlugin* FirstPlugin(const QMap<QString, QList<QObject*>>& plugins,
                                          const QString& format);
    // The plug-in that owns a UID, or null.
    static OVImageFilePlugin* UIDOwner(const QMap<QString, QObject*>& uids, const QString& uid);

    // Asks the plug-in for a reader or writer and follows what it returns.
    template <typename Product>
    Product* Create(const Side& side, OVImageFilePlugin* plugin,
                    Product* (OVImageFilePlugin::*make)(const QString&), const QString& key)
    {
        Product* product = plugin ? (plugin->*make)(key) : nullptr;
        if (product)
            Follow(side, product, plugin);
        return product;
    }
    // Forgets a live reader or writer and gives it back to its plug-in, if that still exists.
    template <typename Product>
    void Release(const Side& side, Product* product, void (OVImageFilePlugin::*release)(Product*))
    {
        QPointer<QObject> plugin;
        if (!Forget(side, product, &plugin))
            return;
        if (auto* owner = qobject_cast<OVImageFilePlugin*>(plugin.data()))
            (owner->*release)(product);
    }
    void OnProductDestroyed(const Side& side, QObject* object);

    // The readers pool. BuildReadersPool() makes n readers per entry, or as many as the
    // machine has ideal threads when n is below 1.
    void BuildReadersPool(int n);
    void ReleaseReadersPool();
    OVImageFileReader* AcquireReader(const QString& format) const;
    void ReleaseAcquiredReader(OVImageFileReader* reader) const;

    OVImageFileManager* const owner;
    QMap<QString, QStringList> readGroups;
    QMap<QString, QStringList> writeGroups;
    QMap<QString, QString> groupNames;
    QSet<QObject*> plugins;
    QMap<QString, QList<QObject*>> readPlugins;
    QMap<QString, QList<QObject*>> writePlugins;
    QMap<QObject*, Maker> liveReaders; // reader -> its plug-in
    QMap<QObject*, Maker> liveWriters;
    QMap<QString, QObject*> readerUIDs;
    QMap<QString, QObject*> writerUIDs;
    QMap<QString, ReaderPoolEntry*> poolByFormat;
    QList<ReaderPoolEntry*> poolEntries;
    // A reader taken out of the pool keeps its key here, mapped to null, so that returning
    // it again afterwards does nothing. Kept on purpose: the plug-in may have deleted it, and
    // putting it back would lend a freed reader.
    QMap<QObject*, ReaderPoolEntry*> poolByReader;
    OVImageFileManager::OpenHook openHook = nullptr;
    void* openHookData = nullptr;
    OVImageFileManager::SaveHook saveHook = nullptr;
    void* saveHookData = nullptr;
    QHash<QObject*, SideEntries> readEntries;
    QHash<QObject*, SideEntries> writeEntries;
    // Registration keeps the All group's list sorted, so that a format is found in it by a
    // binary search; only a plug-in that adds to the All group as one of its own groups
    // appends out of order, until the next registration sorts the list again.
    bool readAllSorted = true;
    bool writeAllSorted = true;

private:
    void RegisterSide(const Side& side, OVImageFilePlugin* plugin);
    void RegisterGroups(const Side& side, OVImageFilePlugin* plugin);
    void UnregisterSide(const Side& side, QObject* plugin);
    void RemoveFromGroups(const Side& side, const QString& format);
    // Adds the formats of the plug-in that are new to the All group of the side; true when
    // any was.
    bool AddToAllGroup(const Side& side, const QStringList& formats);
    // Forgets the live objects of a plug-in that is being destroyed.
    void ForgetLiveOf(const Side& side, QObject* plugin);

    void Follow(const Side& side, QObject* product, QObject* plugin);
    bool Forget(const Side& side, QObject* product, QPointer<QObject>* plugin);

    void RemoveFromPool(QObject* reader);
    static void TakeFromEntry(ReaderPoolEntry* entry, QObject* reader);
    static QObject* Borrow(ReaderPoolEntry* entry);
    static void GiveBack(ReaderPoolEntry* entry, QObject* reader);
    // Waits until no reader of the entry is lent, then takes every idle copy off the stack
    // with its permit; they come back, top of the stack first. Refill() undoes it.
    static std::vector<QObject*> Drain(ReaderPoolEntry* entry);
    static void Refill(ReaderPoolEntry* entry, const std::vector<QObject*>& idle);

public:
    // Called by Drain() on the draining thread just before it waits for a lent reader, so
    // that a test can tell when the pool waits.
    static OVCORE_AUTOTEST_EXPORT void (*drainWaits)();
};
