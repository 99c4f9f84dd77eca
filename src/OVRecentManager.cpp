#include "OVRecentManager.h"

#include "private/OVRecentManager_p.h"
#include "private/OVSingleton_p.h"

OV_DEFINE_SINGLETON(OVRecentManager)

OVRecentManager::OVRecentManager()
    : d(new OVRecentManagerPrivate(this))
{}

OVRecentManager::~OVRecentManager()
{
    delete d;
}

void OVRecentManager::PushRecent(const QString& path)
{
    d->PushRecent(path);
}

void OVRecentManager::PushFavorite(const QString& path)
{
    d->PushFavorite(path);
}

void OVRecentManager::Remove(const QString& path)
{
    d->Remove(path);
}

bool OVRecentManager::IsFavorite(const QString& path) const
{
    return d->favorites.contains(path);
}

QStringList OVRecentManager::GetRecents()
{
    return d->recents;
}

QStringList OVRecentManager::GetFavorites()
{
    return d->favorites;
}

int OVRecentManager::GetRecentCount() const
{
    return d->recents.size();
}

int OVRecentManager::GetFavoriteCount() const
{
    return d->favorites.size();
}

int OVRecentManager::GetRecentsNumber() const
{
    return d->recentsNumber;
}

int OVRecentManager::GetFavoritesNumber() const
{
    return d->favoritesNumber;
}

void OVRecentManager::SetRecentsNumber(int number)
{
    d->SetRecentsNumber(number);
}

void OVRecentManager::SetFavoritesNumber(int number)
{
    d->SetFavoritesNumber(number);
}

int OVRecentManager::GetRecentMaximumNumber()
{
    return OVRecentManagerPrivate::kRecentMaximum;
}

int OVRecentManager::GetFavoriteMaximumNumber()
{
    return OVRecentManagerPrivate::kFavoriteMaximum;
}

QVariant OVRecentManager::GetItemData(const QString& path, int role, const QVariant& defaultValue)
{
    return d->itemData.value(path).value(role, defaultValue);
}

void OVRecentManager::SetItemData(const QString& path, int role, const QVariant& value)
{
    d->SetItemData(path, role, value);
}

void OVRecentManager::ContentUpdated(const QString& path)
{
    d->ContentUpdated(path);
}
