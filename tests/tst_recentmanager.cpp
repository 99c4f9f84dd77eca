// The recent and favourite files: the signal sequences of every change, and the lists kept in
// "user.ini" across runs, whatever the file holds.

#include "OVApplication.h"
#include "OVRecentManager.h"
#include "OVTestSupport.h"

#include <functional>
#include <memory>

namespace {

QString UserIni()
{
    return OVApplication::GetUserDataFolder() + "/user.ini";
}

// A stored list as the settings hold it: a count, then strings, whatever the count says.
QByteArray Stored(qint32 count, const QStringList& paths)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << count;
    for (const QString& path : paths)
        out << path;
    return bytes;
}

// An existing file that the lists can keep across a restart.
QString File(const QString& name)
{
    QDir().mkpath(OVTest::SandboxPath() + "/files");
    QFile file(OVTest::SandboxPath() + "/files/" + name);
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write("x");
    return file.fileName();
}

} // namespace

class TestRecentManager : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { OVRecentManager::ReleaseInstance(); }
    void sequences_data()
    {
        // Steps: r PushRecent, f PushFavorite, x Remove, d SetItemData(role 7), u ContentUpdated,
        // R SetRecentsNumber, F SetFavoritesNumber, ? logs the item data of role 7. The signals of
        // the steps before "|" are not compared. Then the recents and the favourites afterwards.
        OVTest::Columns<QString, QString, QString>({"steps", "expected", "lists"});
        OVTest::Row("pushed again", "r:a r:b d:a | r:a ?:a", "RecentRemoved(a) RecentInserted(a) data(a)=1",
                    "a b |");
        OVTest::Row("favourite pushed as recent", "f:a | r:a", "FavoriteUpdated(a)", "| a");
        OVTest::Row("favourites full", "f:1 f:2 f:3 f:4 f:5 | f:6", "", "| 5 4 3 2 1");
        OVTest::Row("promotion", "r:a r:b d:a | f:a ?:a", "RecentRemoved(a) FavoriteInserted(a) data(a)=1",
                    "b | a");
        OVTest::Row("demotion", "f:z r:1 r:2 r:3 r:4 r:5 r:6 r:7 r:8 r:9 r:10 | x:z ?:z",
                    "FavoriteRemoved(z) RecentRemoved(1) RecentInserted(z) data(z)=none",
                    "z 10 9 8 7 6 5 4 3 2 |");
        OVTest::Row("removed recent", "r:a d:a | x:a r:a ?:a",
                    "RecentRemoved(a) RecentInserted(a) data(a)=none", "a |");
        OVTest::Row("favourites trimmed", "f:a f:b f:c | F:1",
                    "FavoriteRemoved(a) RecentInserted(a) FavoriteRemoved(b) RecentInserted(b)", "b a | c");
        OVTest::Row("recents trimmed", "r:a r:b r:c | R:1", "RecentRemoved(a) RecentRemoved(b)", "c |");
        OVTest::Row("recents full", "R:2 r:a r:b | r:c", "RecentRemoved(a) RecentInserted(c)", "c b |");
        OVTest::Row("limit 0 is no limit", "R:0 f:a | r:a", "RecentInserted(a)", "a | a");
        OVTest::Row("data and updates", "r:a f:b | d:a d:b d:q u:a u:b u:q",
                    "RecentDataChanged(a,7) FavoriteDataChanged(b,7) RecentUpdated(a) FavoriteUpdated(b)",
                    "a | b");
    }
    void sequences()
    {
        QFETCH(QString, steps);
        OVRecentManager* m = Start();
        const QMap<QChar, std::function<void(const QString&)>> run{
            {'|', [&](const QString&) { log->Clear(); }},
            {'r', [&](const QString& p) { m->PushRecent(p); }},
            {'f', [&](const QString& p) { m->PushFavorite(p); }},
            {'x', [&](const QString& p) { m->Remove(p); }},
            {'d', [&](const QString& p) { m->SetItemData(p, 7, 1); }},
            {'u', [&](const QString& p) { m->ContentUpdated(p); }},
            {'R', [&](const QString& n) { m->SetRecentsNumber(n.toInt()); }},
            {'F', [&](const QString& n) { m->SetFavoritesNumber(n.toInt()); }},
            {'?', [&](const QString& p) {
                 log->Append("data(" + p + ")=" + m->GetItemData(p, 7, "none").toString());
             }}};
        for (const QString& step : OVTest::Words(steps))
            run[step.at(0)](step.mid(2));
        QTEST(log->Entries().join(' '), "expected");
        QTEST((m->GetRecents() << "|" << m->GetFavorites()).join(' '), "lists");
    }

    void roundTrip()
    {
        QStringList recents;
        for (int i = 11; i >= 0; --i)
            recents << File(QStringLiteral("r%1.png").arg(i));
        const QStringList favorites{File("f.png")};
        OVRecentManager* m = Start();
        m->SetRecentsNumber(12);
        m->SetFavoritesNumber(3);
        for (auto it = recents.crbegin(); it != recents.crend(); ++it)
            m->PushRecent(*it);
        m->PushFavorite(favorites.first());
        OVRecentManager::ReleaseInstance();
        QSettings stored(UserIni(), QSettings::IniFormat);
        QCOMPARE(stored.value("RecentFiles").toByteArray(), Stored(12, recents));
        QCOMPARE(stored.value("FavoriteFiles").toByteArray(), Stored(1, favorites));
        // Deleted behind the editor's back: gone after the restart.
        QVERIFY(QFile::remove(recents.takeAt(3)));
        OVRecentManager::InitInstance();
        m = OVRecentManager::GetInstance();
        QCOMPARE(m->GetRecents(), recents);
        QCOMPARE(m->GetFavorites(), favorites);
        QCOMPARE(m->GetRecentsNumber() * 100 + m->GetFavoritesNumber(), 1203);
        // Item data is for paths pushed since start.
        QSignalSpy changed(m, &OVRecentManager::RecentDataChanged);
        m->SetItemData(recents.first(), 1, 2);
        QCOMPARE(changed.count() + m->GetItemData(recents.first(), 1, -1).toInt(), -1);
        // Stored limits are bounded; at most the limit is read; the setters take any limit.
        m = Start({{"RecentLimit", 40}, {"FavoriteLimit", -2}, {"RecentFiles", Stored(12, recents)}});
        QCOMPARE(m->GetRecentsNumber() * 100 + m->GetFavoritesNumber(), 1500);
        QCOMPARE(m->GetRecents(), recents);
        m = Start({{"RecentLimit", 2}, {"RecentFiles", Stored(12, recents)}});
        QCOMPARE(m->GetRecents(), recents.mid(0, 2));
        m->SetRecentsNumber(40);
        QCOMPARE(m->GetRecentsNumber(), 40);
    }

    void badStoredValues_data()
    {
        // Stored under "RecentFiles" and "FavoriteFiles" (with both limits 10, or "many", read as 0).
        OVTest::Columns<QVariant, QStringList>({"files", "expected"});
        const QString a = File("a.png");
        const QString b = File("b.png");
        const QByteArray one = Stored(1, {});

        QTest::newRow("not a byte array") << QVariant("abc def") << QStringList();
        QTest::newRow("truncated") << QVariant(Stored(2, {a, b}).chopped(3)) << QStringList{a};
        QTest::newRow("count of two billion") << QVariant(Stored(2000000000, {a, b})) << QStringList{a, b};
        QTest::newRow("negative count") << QVariant(Stored(-3, {a})) << QStringList();
        QTest::newRow("not paths") << QVariant(Stored(4, {QString(), QChar(0) + a, "no/such/file", b}))
                                   << QStringList{b};
        QTest::newRow("length beyond the bytes")
            << QVariant(one + QByteArray("\x7f\xff\xff\xfe\0a", 6)) << QStringList();
        QTest::newRow("limit not a number") << QVariant(Stored(2, {a, b})) << QStringList();
    }
    void badStoredValues()
    {
        QFETCH(QVariant, files);
        const QVariant limit =
            QTest::currentDataTag() == QByteArray("limit not a number") ? QVariant("many") : 10;
        OVRecentManager* m = Start({{"RecentLimit", limit},
                                    {"FavoriteLimit", limit},
                                    {"RecentFiles", files},
                                    {"FavoriteFiles", files}});
        QTEST(m->GetRecents(), "expected");
        QTEST(m->GetFavorites(), "expected");
        QCOMPARE(m->GetRecentsNumber() * 100 + m->GetFavoritesNumber(), limit.toInt() * 101);
        QCOMPARE(log->Entries(), QStringList());
    }

private:
    // A manager loaded from the given stored values (none: a fresh profile), its signals logged.
    OVRecentManager* Start(const QVariantMap& stored = {})
    {
        OVRecentManager::ReleaseInstance();
        QFile::remove(UserIni());
        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            QSettings(UserIni(), QSettings::IniFormat).setValue(it.key(), it.value());
        OVRecentManager::InitInstance();
        OVRecentManager* m = OVRecentManager::GetInstance();
        log = std::make_unique<OVTest::SignalLog>();
        using R = OVRecentManager;
        log->RecordByName(m, &R::FavoriteInserted, &R::RecentInserted, &R::FavoriteRemoved, &R::RecentRemoved,
                          &R::FavoriteUpdated, &R::RecentUpdated, &R::FavoriteDataChanged,
                          &R::RecentDataChanged);
        return m;
    }

    std::unique_ptr<OVTest::SignalLog> log;
};

OV_TEST_MAIN(TestRecentManager)
#include "tst_recentmanager.moc"
