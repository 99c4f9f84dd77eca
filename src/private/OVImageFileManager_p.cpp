#include "private/OVImageFileManager_p.h"

#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"
#include "private/OVBuildLog_p.h"

#include <QMutexLocker>
#include <QThread>

#include <algorithm>

namespace {

const QString& AllGroup()
{
    static const QString uid = QString::fromLatin1(OVImageFileManager::AllGroupUID);
    return uid;
}

} // namespace

OVImageFileManagerPrivate::OVImageFileManagerPrivate(OVImageFileManager* owner)
    : owner(owner)
{
    groupNames.insert(AllGroup(), QObject::tr("All"));
}

OVImageFileManagerPrivate::~OVImageFileManagerPrivate()
{
    // Readers still pooled are not handed back here: only ReleaseReadersPool() does that.
    qDeleteAll(poolEntries);
}

OVImageFileManagerPrivate::Side OVImageFileManagerPrivate::ReadSide()
{
    return {readGroups,
            readAllSorted,
            readerUIDs,
            readPlugins,
            readEntries,
            liveReaders,
            &OVImageFilePlugin::GetReaderUIDs,
            OVImageFilePlugin::CanRead,
            521,
            SLOT(OnReaderDestroyed(QObject*)),
            true};
}

OVImageFileManagerPrivate::Side OVImageFileManagerPrivate::WriteSide()
{
    return {writeGroups,
            writeAllSorted,
            writerUIDs,
            writePlugins,
            writeEntries,
            liveWriters,
            &OVImageFilePlugin::GetWriterUIDs,
            OVImageFilePlugin::CanWrite,
            285,
            SLOT(OnWriterDestroyed(QObject*)),
            false};
}

// Registration

bool OVImageFileManagerPrivate::Register(OVImageFilePlugin* plugin)
{
    if (!plugin)
        return false;
    QObject* object = plugin;
    if (plugins.contains(object))
        return true;
    RegisterSide(ReadSide(), plugin);
    RegisterSide(WriteSide(), plugin);
    QObject::connect(object, SIGNAL(destroyed(QObject*)), owner, SLOT(OnPluginDestroyed(QObject*)));
    plugins.insert(object);
    return true;
}

void OVImageFileManagerPrivate::RegisterSide(const Side& side, OVImageFilePlugin* plugin)
{
    QObject* object = plugin;
    SideEntries entries;
    // A UID stays with the plug-in that registered it first.
    for (const QString& uid : (plugin->*side.uidList)()) {
        if (side.uids.contains(uid)) {
            OV_BUILD_LOG_AT(side.logLine, QStringLiteral("src\\private\\OVImageFileManager_p.cpp"),
                            QStringLiteral("%1 uid is not unique.").arg(uid));
            continue;
        }
        side.uids.insert(uid, object);
        entries.uids << uid;
    }

    // The plug-in goes in front of every format it handles on this side, so that the plug-in
    // registered last serves the format. A format new to the All group joins it.
    for (const QString& format : plugin->GetFormats()) {
        if (!(plugin->GetFormatCapabilities(format) & side.capability))
            continue;
        side.plugins[format].prepend(object);
        entries.formats << format;
    }
    side.entries.insert(object, entries);
    if (AddToAllGroup(side, entries.formats))
        emit owner->SupportedGroupChanged(AllGroup());

    RegisterGroups(side, plugin);
}

void OVImageFileManagerPrivate::RegisterGroups(const Side& side, OVImageFilePlugin* plugin)
{
    for (const QString& group : plugin->GetGroups()) {
        const QStringList offered = plugin->GetGroupFormats(group);
        // A known group is extended; a new one is made of the offered formats this side
        // handles, and is named by the first plug-in that fills it.
        const bool known = side.groups.contains(group);
        QStringList formats = known ? side.groups.value(group) : QStringList();
        bool changed = false;
        for (const QString& format : offered) {
            if ((plugin->GetFormatCapabilities(format) & side.capability) && !formats.contains(format)) {
                formats << format;
                changed = true;
            }
        }
        if (!changed)
            continue;
        if (!known && !groupNames.contains(group)) {
            groupNames.insert(group, plugin->GetGroupName(group));
            emit owner->SupportedGroupsChanged();
        }
        side.groups.insert(group, formats);
        if (group == AllGroup())
            side.allSorted = false;
        emit owner->SupportedGroupChanged(group);
    }
}

bool OVImageFileManagerPrivate::AddToAllGroup(const Side& side, const QStringList& formats)
{
    auto all = side.groups.find(AllGroup());
    if (all == side.groups.end()) {
        if (formats.isEmpty())
            return false;
        all = side.groups.insert(AllGroup(), QStringList());
        side.allSorted = true;
    }
    // A sorted list of distinct formats takes each new one at its sorted place, which gives
    // the same list as appending them all and sorting; an unsorted one is sorted afterwards.
    bool changed = false;
    for (const QString& format : formats) {
        if (side.allSorted) {
            const auto place = std::lower_bound(all->begin(), all->end(), format);
            if (place == all->end() || *place != format) {
                all->insert(place, format);
                changed = true;
            }
        } else if (!all->contains(format)) {
            all->append(format);
            changed = true;
        }
    }
    if (changed && !side.allSorted) {
        all->sort();
        side.allSorted = true;
    }
    return changed;
}

bool OVImageFileManagerPrivate::Unregister(OVImageFilePlugin* plugin)
{
    QObject* object = plugin;
    if (!plugin || !plugins.contains(object))
        return false;
    UnregisterSide(ReadSide(), object);
    UnregisterSide(WriteSide(), object);
    QObject::disconnect(object, SIGNAL(destroyed(QObject*)), owner, SLOT(OnPluginDestroyed(QObject*)));
    plugins.remove(object);
    return true;
}

void OVImageFileManagerPrivate::OnPluginDestroyed(QObject* object)
{
    if (!plugins.remove(object))
        return;
    // Write side first; only here are the plug-in's live readers and writers forgotten,
    // since they cannot be handed back to it any more.
    UnregisterSide(WriteSide(), object);
    ForgetLiveOf(WriteSide(), object);
    UnregisterSide(ReadSide(), object);
    ForgetLiveOf(ReadSide(), object);
}

void OVImageFileManagerPrivate::UnregisterSide(const Side& side, QObject* plugin)
{
    const SideEntries entries = side.entries.take(plugin);
    for (const QString& uid : entries.uids) {
        if (side.uids.value(uid) == plugin)
            side.uids.remove(uid);
    }

    QStringList formats = entries.formats;
    formats.sort();
    formats.removeDuplicates();
    for (const QString& format : qAsConst(formats)) {
        const auto it = side.plugins.find(format);
        if (it == side.plugins.end() || !it->contains(plugin))
            continue;
        // Only the plug-in that served the format can leave it unserved; the format key
        // stays, with an empty list.
        const bool served = it->first() == plugin;
        it->removeAll(plugin);
        if (served && it->isEmpty())
            RemoveFromGroups(side, format);
    }
}

void OVImageFileManagerPrivate::RemoveFromGroups(const Side& side, const QString& format)
{
    // Receivers may call back in, so each group is looked up afresh after a signal.
    const QStringList uids = side.groups.keys();
    for (const QString& uid : uids) {
        const auto it = side.groups.find(uid);
        if (it == side.groups.end())
            continue;
        if (uid == AllGroup() && side.allSorted) {
            const auto place = std::lower_bound(it->begin(), it->end(), format);
            if (place == it->end() || *place != format)
                continue;
            it->erase(place);
        } else if (!it->removeOne(format)) {
            continue;
        }
        // An emptied group stays, with its name, until a plug-in fills it again.
        if (it->isEmpty() && uid != AllGroup())
            emit owner->SupportedGroupsChanged();
        emit owner->SupportedGroupChanged(uid);
    }
}

void OVImageFileManagerPrivate::ForgetLiveOf(const Side& side, QObject* plugin)
{
    // By the time a plug-in reports its destruction, guarded pointers to it read null, as do
    // those to a plug-in unregistered and deleted before; the recorded pointer tells them
    // apart. The objects of such an earlier plug-in stay, so its pool entry keeps lending.
    QList<QObject*> orphans;
    for (auto it = side.live.cbegin(); it != side.live.cend(); ++it) {
        if (it.value().plugin == plugin)
            orphans << it.key();
    }
    for (QObject* product : qAsConst(orphans)) {
        if (side.pooled)
            RemoveFromPool(product);
        QObject::disconnect(product, SIGNAL(destroyed(QObject*)), owner, side.onDestroyed);
        side.live.remove(product);
    }
}

OVImageFilePlugin* OVImageFileManagerPrivate::FirstPlugin(const QMap<QString, QList<QObject*>>& plugins,
                                                          const QString& format)
{
    const auto it = plugins.constFind(format);
    return it == plugins.cend() || it->isEmpty() ? nullptr : qobject_cast<OVImageFilePlugin*>(it->first());
}

OVImageFilePlugin* OVImageFileManagerPrivate::UIDOwner(const QMap<QString, QObject*>& uids,
                                                       const QString& uid)
{
    return qobject_cast<OVImageFilePlugin*>(uids.value(uid));
}

// Live readers and writers

void OVImageFileManagerPrivate::Follow(const Side& side, QObject* product, QObject* plugin)
{
    QObject::connect(product, SIGNAL(destroyed(QObject*)), owner, side.onDestroyed);
    side.live.insert(product, {plugin, plugin});
}

bool OVImageFileManagerPrivate::Forget(const Side& side, QObject* product, QPointer<QObject>* plugin)
{
    const auto it = side.live.find(product);
    if (it == side.live.end())
        return false;
    *plugin = it.value().alive;
    side.live.erase(it);
    QObject::disconnect(product, SIGNAL(destroyed(QObject*)), owner, side.onDestroyed);
    if (side.pooled)
        RemoveFromPool(product);
    return true;
}

void OVImageFileManagerPrivate::OnProductDestroyed(const Side& side, QObject* object)
{
    side.live.remove(object);
    if (side.pooled)
        RemoveFromPool(object);
}

// Readers pool

void OVImageFileManagerPrivate::BuildReadersPool(int n)
{
    if (n < 1)
        n = QThread::idealThreadCount();
    const Side side = ReadSide();
    const QStringList formats = readGroups.value(AllGroup());
    for (const QString& format : formats) {
        if (poolByFormat.contains(format))
            continue;
        auto* entry = new ReaderPoolEntry(n);
        OVImageFileReader* reader = nullptr;
        for (int i = 0; i < n; ++i) {
            reader = Create(side, FirstPlugin(readPlugins, format), &OVImageFilePlugin::CreateReader, format);
            entry->readers.push_back(reader);
            poolByReader.insert(reader, entry);
        }
        // The entry serves what its readers declare, which may be more than the format
        // that made it (a jpg reader that also reads jpeg), or may leave that format out.
        if (reader) {
            for (const QString& served : reader->GetFormats())
                poolByFormat.insert(served, entry);
        }
        poolEntries.append(entry);
    }
}

void OVImageFileManagerPrivate::ReleaseReadersPool()
{
    for (ReaderPoolEntry* entry : qAsConst(poolEntries)) {
        // Every reader of the entry is idle once it is drained; one returned more than once
        // is on the stack more than once, and goes back to its plug-in only the first time.
        // Only the pointer is compared, since the plug-in may have deleted it already.
        std::vector<QObject*> readers;
        for (QObject* reader : Drain(entry)) {
            if (std::find(readers.begin(), readers.end(), reader) == readers.end())
                readers.push_back(reader);
        }
        for (QObject* reader : readers) {
            // A reader no longer of this entry was handed back or destroyed already; a null
            // one from the plug-in is not followed and stays with the entry.
            if (poolByReader.value(reader) == entry)
                Release(ReadSide(), static_cast<OVImageFileReader*>(reader),
                        &OVImageFilePlugin::ReleaseReader);
        }
        delete entry;
    }
    poolEntries = QList<ReaderPoolEntry*>();
    // The keys stay, so that a format or reader of the old pool is still recognised; what
    // they pointed to is gone.
    for (auto& entry : poolByFormat)
        entry = nullptr;
    for (auto& entry : poolByReader)
        entry = nullptr;
}

OVImageFileReader* OVImageFileManagerPrivate::AcquireReader(const QString& format) const
{
    ReaderPoolEntry* entry = poolByFormat.value(format.toLower());
    // Only readers made by CreateReader() are ever put into an entry.
    return entry ? static_cast<OVImageFileReader*>(Borrow(entry)) : nullptr;
}

void OVImageFileManagerPrivate::ReleaseAcquiredReader(OVImageFileReader* reader) const
{
    if (ReaderPoolEntry* entry = poolByReader.value(reader))
        GiveBack(entry, reader);
}

void OVImageFileManagerPrivate::RemoveFromPool(QObject* reader)
{
    const auto it = poolByReader.find(reader);
    if (it == poolByReader.end() || !it.value())
        return;
    TakeFromEntry(it.value(), reader);
    it.value() = nullptr;
}

void OVImageFileManagerPrivate::TakeFromEntry(ReaderPoolEntry* entry, QObject* reader)
{
    // With every reader of the entry idle, each copy of the reader leaves the stack with its
    // permit. An entry left without readers keeps no permits, so a borrower of its formats
    // waits.
    std::vector<QObject*> idle = Drain(entry);
    const auto copies = std::remove(idle.begin(), idle.end(), reader);
    if (copies != idle.end()) {
        idle.erase(copies, idle.end());
        QMutexLocker locker(&entry->lock);
        --entry->count;
    }
    Refill(entry, idle);
}

void (*OVImageFileManagerPrivate::drainWaits)() = nullptr;

std::vector<QObject*> OVImageFileManagerPrivate::Drain(ReaderPoolEntry* entry)
{
    // Each permit stands for one copy on the stack, so taking one permit after another takes
    // the stack apart; a lent reader adds its copy when it comes back.
    std::vector<QObject*> idle;
    for (;;) {
        {
            QMutexLocker locker(&entry->lock);
            if (entry->readers.empty()) {
                if (entry->lent.empty())
                    return idle;
                if (drainWaits)
                    drainWaits();
            }
        }
        entry->available.acquire();
        QMutexLocker locker(&entry->lock);
        idle.push_back(entry->readers.back());
        entry->readers.pop_back();
    }
}

void OVImageFileManagerPrivate::Refill(ReaderPoolEntry* entry, const std::vector<QObject*>& idle)
{
    if (idle.empty())
        return;
    {
        QMutexLocker locker(&entry->lock);
        entry->readers.insert(entry->readers.end(), idle.rbegin(), idle.rend());
    }
    entry->available.release(int(idle.size()));
}

QObject* OVImageFileManagerPrivate::Borrow(ReaderPoolEntry* entry)
{
    entry->available.acquire();
    QMutexLocker locker(&entry->lock);
    QObject* reader = entry->readers.back();
    entry->readers.pop_back();
    const auto out = entry->Lent(reader);
    if (out != entry->lent.end())
        ++out->second;
    else
        entry->lent.emplace_back(reader, 1);
    return reader;
}

void OVImageFileManagerPrivate::GiveBack(ReaderPoolEntry* entry, QObject* reader)
{
    {
        QMutexLocker locker(&entry->lock);
        entry->readers.push_back(reader);
        // A reader that was not out comes back as one more copy on the stack.
        const auto out = entry->Lent(reader);
        if (out != entry->lent.end() && --out->second == 0) {
            *out = entry->lent.back();
            entry->lent.pop_back();
        }
    }
    entry->available.release();
}
