#pragma once

#include "OVCoreExport.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

class OVRecentManagerPrivate;

/// The recent and the favourite files, newest first, each list bounded by a limit.
///
/// A path is in at most one of the two lists: making a recent file a favourite moves it out
/// of the recents, and removing a favourite moves it to the front of the recents. Paths
/// pushed since the instance was created can carry item data (values keyed by an integer
/// role); it is not kept across runs. The lists and their limits are read from the user
/// settings when the instance is created, so after the application object, and written back
/// when it is released. Paths are compared exactly.
class OVCORE_EXPORT OVRecentManager : public QObject
{
    Q_OBJECT
public:
    /// Creates the manager and reads the lists from "user.ini"; a second call does nothing.
    static void InitInstance();
    /// The manager, or null before InitInstance() and after ReleaseInstance().
    static OVRecentManager* GetInstance();
    /// Writes the lists back to "user.ini" and deletes the manager.
    static void ReleaseInstance();

    /// Moves path to the front of the recents, evicting the oldest ones beyond the limit; a
    /// favourite only announces FavoriteUpdated (while the recents limit is 1 or more).
    void PushRecent(const QString& path);
    /// Moves path to the front of the favourites (out of the recents). Nothing happens when
    /// the favourites are full: they are never evicted to make room.
    void PushFavorite(const QString& path);
    /// A favourite becomes the newest recent; a recent is dropped with its item data.
    void Remove(const QString& path);
    /// Whether \a path is a favourite.
    bool IsFavorite(const QString& path) const;
    /// The recent files, newest first.
    QStringList GetRecents();
    /// The favourite files, newest first.
    QStringList GetFavorites();
    /// The number of recent files.
    int GetRecentCount() const;
    /// The number of favourite files.
    int GetFavoriteCount() const;
    /// The limit of the recents; one below 1 means no limit.
    int GetRecentsNumber() const;
    /// The limit of the favourites; one below 1 means no limit.
    int GetFavoritesNumber() const;
    /// Sets the limit of the recents as given and trims the list to it.
    void SetRecentsNumber(int number);
    /// Sets the limit of the favourites as given and trims the list to it (a trimmed
    /// favourite becomes a recent).
    void SetFavoritesNumber(int number);
    /// The bound of the recents limit read from the settings: 15.
    static int GetRecentMaximumNumber();
    /// The bound of the favourites limit read from the settings: 10.
    static int GetFavoriteMaximumNumber();
    /// The item data of \a path under \a role, or \a defaultValue.
    QVariant GetItemData(const QString& path, int role, const QVariant& defaultValue);
    /// Sets item data, only for paths pushed since start; announces RecentDataChanged or
    /// FavoriteDataChanged.
    void SetItemData(const QString& path, int role, const QVariant& value);
    /// Announces FavoriteUpdated or RecentUpdated for path, if it is in a list.
    void ContentUpdated(const QString& path);

signals:
    /// \a path became the newest favourite.
    void FavoriteInserted(const QString& path);
    /// \a path became the newest recent file.
    void RecentInserted(const QString& path);
    /// \a path left the favourites.
    void FavoriteRemoved(const QString& path);
    /// \a path left the recent files.
    void RecentRemoved(const QString& path);
    /// The favourite \a path was opened again or its contents changed.
    void FavoriteUpdated(const QString& path);
    /// The recent file \a path changed (ContentUpdated()).
    void RecentUpdated(const QString& path);
    /// The item data of the favourite \a path changed under \a role.
    void FavoriteDataChanged(const QString& path, int role);
    /// The item data of the recent file \a path changed under \a role.
    void RecentDataChanged(const QString& path, int role);

private:
    OVRecentManager();
    ~OVRecentManager() override;
    Q_DISABLE_COPY(OVRecentManager)

    OVRecentManagerPrivate* const d;
};
