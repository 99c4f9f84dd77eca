#pragma once

#include "OVImageFileManager.h"
#include "OVImageFilePlugin.h"
#include "private/OVReadersPool_p.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>

// The tables of the image file registry. The read side and the write side run the same
// procedures on tables of their own; the readers pool lends ready-made readers to worker threads.
class OVImageFileManagerPrivate
{
public:
    explicit OVImageFileManagerPrivate(OVImageFileManager* owner);

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

    // The tables of one side, and the plug-in operations and owner slot they are kept with.
    struct Side
    {
        Side(QStringList (OVImageFilePlugin::*uidList)() const,
             OVImageFilePlugin::FormatCapability capability, int logLine, const char* onDestroyed,
             OVReadersPool* pool)
            : uidList(uidList)
            , capability(capability)
            , logLine(logLine)
            , onDestroyed(onDestroyed)
            , pool(pool)
        {}

        QMap<QString, QStringList> groups;
        QMap<QString, QObject*> uids;           // owner of each UID
        QMap<QString, QList<QObject*>> plugins; // by format, the one serving it first
        QMap<QObject*, Maker> live;             // reader or writer -> its plug-in
        QHash<QObject*, SideEntries> entries;   // by registered plug-in
        // Registration keeps the All group's list sorted, so that a format is found in it by a
        // binary search; only a plug-in that adds to the All group as one of its own groups
        // appends out of order, until the next registration sorts the list again.
        bool allSorted = true;

        QStringList (OVImageFilePlugin::*const uidList)() const;
        const OVImageFilePlugin::FormatCapability capability;
        const int logLine;             // of the duplicate-UID line
        const char* const onDestroyed; // slot of the owner that follows a live reader or writer
        OVReadersPool* const pool;     // where its live objects may sit, or null
    };

    bool Register(OVImageFilePlugin* plugin);
    bool Unregister(OVImageFilePlugin* plugin);
    void OnPluginDestroyed(QObject* object);

    // The plug-in that serves a format (lower-cased by the caller), or null.
    static OVImageFilePlugin* FirstPlugin(const Side& side, const QString& format);
    // The plug-in that owns a UID, or null.
    static OVImageFilePlugin* UIDOwner(const Side& side, const QString& uid);

    // Asks the plug-in for a reader or writer and follows what it returns.
    template <typename Product>
    Product* Create(Side& side, OVImageFilePlugin* plugin,
                    Product* (OVImageFilePlugin::*make)(const QString&), const QString& key)
    {
        Product* product = plugin ? (plugin->*make)(key) : nullptr;
        if (product)
            Follow(side, product, plugin);
        return product;
    }
    // Forgets a live reader or writer and gives it back to its plug-in, if that still exists.
    template <typename Product>
    void Release(Side& side, Product* product, void (OVImageFilePlugin::*release)(Product*))
    {
        QPointer<QObject> plugin;
        if (!Forget(side, product, &plugin))
            return;
        if (auto* owner = qobject_cast<OVImageFilePlugin*>(plugin.data()))
            (owner->*release)(product);
    }
    void OnProductDestroyed(Side& side, QObject* object);

    // Builds the pool from the readable formats: n readers per entry, or as many as the
    // machine has ideal threads when n is below 1.
    void BuildReadersPool(int n);
    void ReleaseReadersPool();

    OVImageFileManager* const owner;
    QMap<QString, QString> groupNames; // shared by both sides
    QSet<QObject*> plugins;
    OVReadersPool pool;
    Side read;
    Side write;
    OVImageFileManager::OpenHook openHook = nullptr;
    void* openHookData = nullptr;
    OVImageFileManager::SaveHook saveHook = nullptr;
    void* saveHookData = nullptr;

private:
    void RegisterSide(Side& side, OVImageFilePlugin* plugin);
    void RegisterGroups(Side& side, OVImageFilePlugin* plugin);
    void UnregisterSide(Side& side, QObject* plugin);
    void RemoveFromGroups(Side& side, const QString& format);
    // Adds the formats of the plug-in that are new to the All group of the side; true when
    // any was.
    static bool AddToAllGroup(Side& side, const QStringList& formats);
    // Forgets the live objects of a plug-in that is being destroyed.
    void ForgetLiveOf(Side& side, QObject* plugin);

    void Follow(Side& side, QObject* product, QObject* plugin);
    bool Forget(Side& side, QObject* product, QPointer<QObject>* plugin);
};
