#include "private/OVImageFileManager_p.h"

#include "OVImageFileReader.h"
#include "OVImageFileWriter.h"
#include "private/OVBuildLog_p.h"

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
    , read(&OVImageFilePlugin::GetReaderUIDs, OVImageFilePlugin::CanRead, 521,
           SLOT(OnReaderDestroyed(QObject*)), &pool)
    , write(&OVImageFilePlugin::GetWriterUIDs, OVImageFilePlugin::CanWrite, 285,
            SLOT(OnWriterDestroyed(QObject*)), nullptr)
{
    groupNames.insert(AllGroup(), QObject::tr("All"));
}

// Registration

bool OVImageFileManagerPrivate::Register(OVImageFilePlugin* plugin)
{
    if (!plugin)
        return false;
    QObject* object = plugin;
    if (plugins.contains(object))
        return true;
    RegisterSide(read, plugin);
    RegisterSide(write, plugin);
    QObject::connect(object, SIGNAL(destroyed(QObject*)), owner, SLOT(OnPluginDestroyed(QObject*)));
    plugins.insert(object);
    return true;
}

void OVImageFileManagerPrivate::RegisterSide(Side& side, OVImageFilePlugin* plugin)
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

void OVImageFileManagerPrivate::RegisterGroups(Side& side, OVImageFilePlugin* plugin)
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

bool OVImageFileManagerPrivate::AddToAllGroup(Side& side, const QStringList& formats)
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
    UnregisterSide(read, object);
    UnregisterSide(write, object);
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
    UnregisterSide(write, object);
    ForgetLiveOf(write, object);
    UnregisterSide(read, object);
    ForgetLiveOf(read, object);
}

void OVImageFileManagerPrivate::UnregisterSide(Side& side, QObject* plugin)
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

void OVImageFileManagerPrivate::RemoveFromGroups(Side& side, const QString& format)
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

void OVImageFileManagerPrivate::ForgetLiveOf(Side& side, QObject* plugin)
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
        if (side.pool)
            side.pool->Remove(product);
        QObject::disconnect(product, SIGNAL(destroyed(QObject*)), owner, side.onDestroyed);
        side.live.remove(product);
    }
}

OVImageFilePlugin* OVImageFileManagerPrivate::FirstPlugin(const Side& side, const QString& format)
{
    const auto it = side.plugins.constFind(format);
    if (it == side.plugins.cend() || it->isEmpty())
        return nullptr;
    return qobject_cast<OVImageFilePlugin*>(it->first());
}

OVImageFilePlugin* OVImageFileManagerPrivate::UIDOwner(const Side& side, const QString& uid)
{
    return qobject_cast<OVImageFilePlugin*>(side.uids.value(uid));
}

// Live readers and writers

void OVImageFileManagerPrivate::Follow(Side& side, QObject* product, QObject* plugin)
{
    QObject::connect(product, SIGNAL(destroyed(QObject*)), owner, side.onDestroyed);
    side.live.insert(product, {plugin, plugin});
}

bool OVImageFileManagerPrivate::Forget(Side& side, QObject* product, QPointer<QObject>* plugin)
{
    const auto it = side.live.find(product);
    if (it == side.live.end())
        return false;
    *plugin = it.value().alive;
    side.live.erase(it);
    QObject::disconnect(product, SIGNAL(destroyed(QObject*)), owner, side.onDestroyed);
    if (side.pool)
        side.pool->Remove(product);
    return true;
}

void OVImageFileManagerPrivate::OnProductDestroyed(Side& side, QObject* object)
{
    side.live.remove(object);
    if (side.pool)
        side.pool->Remove(object);
}

// Readers pool

void OVImageFileManagerPrivate::BuildReadersPool(int n)
{
    pool.Build(read.groups.value(AllGroup()), n, [this](const QString& format) {
        return Create(read, FirstPlugin(read, format), &OVImageFilePlugin::CreateReader, format);
    });
}

void OVImageFileManagerPrivate::ReleaseReadersPool()
{
    pool.Release(
        [this](OVImageFileReader* reader) { Release(read, reader, &OVImageFilePlugin::ReleaseReader); });
}
