#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

class OVRecentManager;

class OVRecentManagerPrivate
{
public:
    // Reads the lists and their limits from the user settings; no signals.
    explicit OVRecentManagerPrivate(OVRecentManager* owner);
    // Writes them back.
    ~OVRecentManagerPrivate();

    OVRecentManagerPrivate(const OVRecentManagerPrivate&) = delete;
    OVRecentManagerPrivate& operator=(const OVRecentManagerPrivate&) = delete;

    void PushRecent(const QString& path);
    void PushFavorite(const QString& path);
    void Remove(const QString& path);
    void SetRecentsNumber(int number);
    void SetFavoritesNumber(int number);
    void SetItemData(const QString& path, int role, const QVariant& value);
    void ContentUpdated(const QString& path);

    static constexpr int kRecentMaximum = 15;
    static constexpr int kFavoriteMaximum = 10;

    OVRecentManager* const owner;
    QMap<QString, QMap<int, QVariant>> itemData;
    int favoritesNumber = 5;
    int recentsNumber = 10;
    QStringList favorites;
    QStringList recents;

private:
    // Drops the oldest recents, with their item data, until one more fits under the limit.
    void MakeRoomForRecent();
    // Puts path at the front of the recents.
    void InsertRecent(const QString& path);
};
