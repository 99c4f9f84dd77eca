#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

class OVRecentManagerPrivate;

// The recent and the favourite files, newest first, each list bounded by a limit. A path is
// in at most one of the two lists: making a recent file a favourite moves it out of the
// recents, and removing a favourite moves it to the front of the recents. Paths pushed since
// the instance was created can carry item data (values keyed by an integer role); it is not
// kept across runs. The lists and their limits are read from the user settings when the
// instance is created, so after the application object, and written back when it is released.
// Paths are compared exactly.
class OVCORE_EXPORT OVRecentManager : public QObject
{
    Q_OBJECT
public:
    static void InitInstance();
    static OVRecentManager* GetInstance();
    static void ReleaseInstance();

    // Moves path to the front of the recents, evicting the oldest ones beyond the limit; a
    // favourite only announces FavoriteUpdated (while the recents limit is 1 or more).
    void PushRecent(const QString& path);
    // Moves path to the front of the favourites (out of the recents). Nothing happens when the
    // favourites are full: they are never evicted to make room.
    void PushFavorite(const QString& path);
    // A favourite becomes the newest recent; a recent is dropped with its item data.
    void Remove(const QString& path);
    bool IsFavorite(const QString& path) const;
    QStringList GetRecents();
    QStringList GetFavorites();
    int GetRecentCount() const;
    int GetFavoriteCount() const;
    // The limits; one below 1 means no limit.
    int GetRecentsNumber() const;
    int GetFavoritesNumber() const;
    // Sets a limit as given and trims the list to it (a trimmed favourite becomes a recent).
    void SetRecentsNumber(int number);
    void SetFavoritesNumber(int number);
    // The bounds of the limits read from the settings: 15 and 10.
    static int GetRecentMaximumNumber();
    static int GetFavoriteMaximumNumber();
    QVariant GetItemData(const QString& path, int role, const QVariant& defaultValue);
    // Only for paths pushed since start; announces RecentDataChanged or FavoriteDataChanged.
    void SetItemData(const QString& path, int role, const QVariant& value);
    // Announces FavoriteUpdated or RecentUpdated for path, if it is in a list.
    void ContentUpdated(const QString& path);

signals:
    void FavoriteInserted(const QString& path);
    void RecentInserted(const QString& path);
    void FavoriteRemoved(const QString& path);
    void RecentRemoved(const QString& path);
    void FavoriteUpdated(const QString& path);
    void RecentUpdated(const QString& path);
    void FavoriteDataChanged(const QString& path, int role);
    void RecentDataChanged(const QString& path, int role);

private:
    OVRecentManager();
    ~OVRecentManager() override;
    Q_DISABLE_COPY(OVRecentManager)

    OVRecentManagerPrivate* const d;
};
