#include "private/OVRecentManager_p.h"

#include "OVRecentManager.h"
#include "private/OVRecentList_p.h"
#include "private/OVSettingsStore_p.h"

#include <QFile>

#include <algorithm>

namespace {

// A stored limit, bounded to 0..maximum; a value that is no number reads as 0, as QVariant
// converts it.
int ReadLimit(const QString& key, int def, int maximum)
{
    return std::clamp(OVSettingsStore::UserValue(key, def).toInt(), 0, maximum);
}

// The first limit paths of a stored list that name existing files. Strings that cannot be
// paths (empty ones, or ones with a null character) are dropped like missing files.
QStringList ReadList(const QString& key, int limit)
{
    QStringList paths;
    const QByteArray bytes = OVSettingsStore::UserValue(key, QByteArray()).toByteArray();
    for (const QString& path : OVRecentList::Decode(bytes, limit)) {
        if (!path.isEmpty() && !path.contains(QChar::Null) && QFile::exists(path))
            paths << path;
    }
    return paths;
}

} // namespace

OVRecentManagerPrivate::OVRecentManagerPrivate(OVRecentManager* owner)
    : owner(owner)
{
    recentsNumber = ReadLimit(OVSettingsStore::kRecentLimitKey, recentsNumber, kRecentMaximum);
    recents = ReadList(OVSettingsStore::kRecentFilesKey, recentsNumber);
    favoritesNumber = ReadLimit(OVSettingsStore::kFavoriteLimitKey, favoritesNumber, kFavoriteMaximum);
    favorites = ReadList(OVSettingsStore::kFavoriteFilesKey, favoritesNumber);
}

OVRecentManagerPrivate::~OVRecentManagerPrivate()
{
    OVSettingsStore::SetUserValue(OVSettingsStore::kRecentLimitKey, recentsNumber);
    OVSettingsStore::SetUserValue(OVSettingsStore::kFavoriteLimitKey, favoritesNumber);
    OVSettingsStore::SetUserValue(OVSettingsStore::kRecentFilesKey, OVRecentList::Encode(recents));
    OVSettingsStore::SetUserValue(OVSettingsStore::kFavoriteFilesKey, OVRecentList::Encode(favorites));
}

void OVRecentManagerPrivate::PushRecent(const QString& path)
{
    // A limit below 1 means no limit; a favourite is then pushed as a recent too.
    if (favorites.contains(path) && recentsNumber > 0) {
        emit owner->FavoriteUpdated(path);
        return;
    }
    if (recents.contains(path)) {
        recents.removeAll(path);
        emit owner->RecentRemoved(path);
        recents.prepend(path);
        emit owner->RecentInserted(path);
        return;
    }
    MakeRoomForRecent();
    itemData[path];
    InsertRecent(path);
}

void OVRecentManagerPrivate::PushFavorite(const QString& path)
{
    if (favorites.contains(path)) {
        favorites.removeAll(path);
        emit owner->FavoriteRemoved(path);
    } else {
        if (favorites.size() >= favoritesNumber)
            return;
        if (recents.contains(path)) {
            recents.removeAll(path);
            emit owner->RecentRemoved(path);
        } else {
            itemData[path];
        }
    }
    favorites.prepend(path);
    emit owner->FavoriteInserted(path);
}

void OVRecentManagerPrivate::Remove(const QString& path)
{
    if (favorites.contains(path)) {
        favorites.removeAll(path);
        emit owner->FavoriteRemoved(path);
        MakeRoomForRecent();
        InsertRecent(path);
    } else if (recents.contains(path)) {
        recents.removeAll(path);
        itemData.remove(path);
        emit owner->RecentRemoved(path);
    }
}

void OVRecentManagerPrivate::SetRecentsNumber(int number)
{
    recentsNumber = number;
    // Remove() is given a copy: erasing the list's own element would pull the path from under it.
    while (number >= 1 && recents.size() > number)
        Remove(QString(recents.last()));
}

void OVRecentManagerPrivate::SetFavoritesNumber(int number)
{
    favoritesNumber = number;
    while (number >= 1 && favorites.size() > number)
        Remove(QString(favorites.last()));
}

void OVRecentManagerPrivate::SetItemData(const QString& path, int role, const QVariant& value)
{
    auto entry = itemData.find(path);
    if (entry == itemData.end())
        return;
    entry->insert(role, value);
    if (recents.contains(path))
        emit owner->RecentDataChanged(path, role);
    else if (favorites.contains(path))
        emit owner->FavoriteDataChanged(path, role);
}

void OVRecentManagerPrivate::ContentUpdated(const QString& path)
{
    if (favorites.contains(path))
        emit owner->FavoriteUpdated(path);
    else if (recents.contains(path))
        emit owner->RecentUpdated(path);
}

void OVRecentManagerPrivate::MakeRoomForRecent()
{
    while (recentsNumber >= 1 && recents.size() >= recentsNumber) {
        const QString oldest = recents.takeLast();
        itemData.remove(oldest);
        emit owner->RecentRemoved(oldest);
    }
}

void OVRecentManagerPrivate::InsertRecent(const QString& path)
{
    recents.prepend(path);
    emit owner->RecentInserted(path);
}
