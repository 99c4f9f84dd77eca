// The recent and favourite files: the signal sequences of every change, and the lists kept in
// "user.ini" across runs, whatever the file holds.

#include "OVApplication.h"
#include "OVRecentManager.h"
#include "OVTestSupport.h"

#include <QDataStream>
#include <QDir>
#include <QSettings>

#include <memory>

namespace {

QString UserIni()
{
    return OVApplication::GetUserDataFolder() + QStringLiteral("/user.ini");
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

QStringList Decoded(const QVariant& value)
{
    QDataStream in(value.toByteArray());
    qint32 count = 0;
    in >> count;
    QStringList paths;
    for (qint32 i = 0; i < count; ++i) {
        QString path;
        in >> path;
        paths << path;
    }
    return paths;
}

// Existing files the lists can keep across a restart.
QString File(const QString& name)
{
    const QString folder = OVTest::SandboxPath() + QStringLiteral("/files");
    QDir().mkpath(folder);
    QFile file(folder + QLatin1Char('/') + name);
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
    void sequences_data();
    void sequences();
    void roundTrip();
    void badStoredValues_data();
    void badStoredValues();

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
        log->Record(m, &OVRecentManager::FavoriteInserted, QStringLiteral("FavoriteInserted"));
        log->Record(m, &OVRecentManager::RecentInserted, QStringLiteral("RecentInserted"));
        log->Record(m, &OVRecentManager::FavoriteRemoved, QStringLiteral("FavoriteRemoved"));
        log->Record(m, &OVRecentManager::RecentRemoved, QStringLiteral("RecentRemoved"));
        log->Record(m, &OVRecentManager::FavoriteUpdated, QStringLiteral("FavoriteUpdated"));
        log->Record(m, &OVRecentManager::RecentUpdated, QStringLiteral("RecentUpdated"));
        log->Record(m, &OVRecentManager::FavoriteDataChanged, QStringLiteral("FavoriteDataChanged"));
        log->Record(m, &OVRecentManager::RecentDataChanged, QStringLiteral("RecentDataChanged"));
        return m;
    }

    std::unique_ptr<OVTest::SignalLog> log;
};

void TestRecentManager::sequences_data()
{
    // Steps: r PushRecent, f PushFavorite, x Remove, d SetItemData(role 7), u ContentUpdated,
    // R SetRecentsNumber, F SetFavoritesNumber, ? logs the item data of role 7. The signals of
    // the steps before "|" are not compared.
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("recents");
    QTest::addColumn<QStringList>("favorites");

    QString steps;
    QStringList expected;
    for (int i = 1; i <= 16; ++i) {
        steps += QStringLiteral(" r:%1").arg(i);
        if (i > 10)
            expected << QStringLiteral("RecentRemoved(%1)").arg(i - 10);
        expected << QStringLiteral("RecentInserted(%1)").arg(i);
    }
    QTest::newRow("16 recents keep the newest 10")
        << "|" + steps << expected << QString("16 15 14 13 12 11 10 9 8 7").split(' ') << QStringList();
    QTest::newRow("pushed again moves to the front")
        << "r:a r:b d:a | r:a ?:a" << QStringList{"RecentRemoved(a)", "RecentInserted(a)", "data(a)=1"}
        << QStringList{"a", "b"} << QStringList();
    QTest::newRow("favourite pushed as recent")
        << "f:a | r:a" << QStringList{"FavoriteUpdated(a)"} << QStringList() << QStringList{"a"};
    QTest::newRow("favourites full") << "f:1 f:2 f:3 f:4 f:5 | f:6" << QStringList() << QStringList()
                                     << QString("5 4 3 2 1").split(' ');
    QTest::newRow("promotion keeps item data")
        << "r:a r:b d:a | f:a ?:a" << QStringList{"RecentRemoved(a)", "FavoriteInserted(a)", "data(a)=1"}
        << QStringList{"b"} << QStringList{"a"};
    QTest::newRow("demotion evicts the oldest recent")
        << "f:z r:1 r:2 r:3 r:4 r:5 r:6 r:7 r:8 r:9 r:10 | x:z"
        << QStringList{"FavoriteRemoved(z)", "RecentRemoved(1)", "RecentInserted(z)"}
        << QString("z 10 9 8 7 6 5 4 3 2").split(' ') << QStringList();
    QTest::newRow("removed recent loses item data")
        << "r:a d:a | x:a r:a ?:a" << QStringList{"RecentRemoved(a)", "RecentInserted(a)", "data(a)=none"}
        << QStringList{"a"} << QStringList();
    QTest::newRow("favourites trimmed become recents")
        << "f:a f:b f:c | F:1"
        << QStringList{"FavoriteRemoved(a)", "RecentInserted(a)", "FavoriteRemoved(b)", "RecentInserted(b)"}
        << QStringList{"b", "a"} << QStringList{"c"};
    QTest::newRow("recents trimmed") << "r:a r:b r:c | R:1"
                                     << QStringList{"RecentRemoved(a)", "RecentRemoved(b)"}
                                     << QStringList{"c"} << QStringList();
    QTest::newRow("limit 0 is no limit")
        << "R:0 f:a | r:a" << QStringList{"RecentInserted(a)"} << QStringList{"a"} << QStringList{"a"};
    QTest::newRow("data and updates by list")
        << "r:a f:b | d:a d:b d:q u:a u:b u:q"
        << QStringList{"RecentDataChanged(a,7)", "FavoriteDataChanged(b,7)", "RecentUpdated(a)",
                       "FavoriteUpdated(b)"}
        << QStringList{"a"} << QStringList{"b"};
}

void TestRecentManager::sequences()
{
    QFETCH(QString, steps);
    QFETCH(QStringList, expected);
    OVRecentManager* m = Start();
    for (const QString& step : steps.split(' ', Qt::SkipEmptyParts)) {
        const QString arg = step.mid(2);
        switch (step.at(0).toLatin1()) {
        case '|':
            log->Clear();
            break;
        case 'r':
            m->PushRecent(arg);
            break;
        case 'f':
            m->PushFavorite(arg);
            break;
        case 'x':
            m->Remove(arg);
            break;
        case 'd':
            m->SetItemData(arg, 7, 1);
            break;
        case 'u':
            m->ContentUpdated(arg);
            break;
        case 'R':
            m->SetRecentsNumber(arg.toInt());
            break;
        case 'F':
            m->SetFavoritesNumber(arg.toInt());
            break;
        case '?':
            log->Append(QStringLiteral("data(%1)=%2").arg(arg, m->GetItemData(arg, 7, "none").toString()));
        }
    }
    QCOMPARE(log->Entries(), expected);
    QTEST(m->GetRecents(), "recents");
    QTEST(m->GetFavorites(), "favorites");
}

void TestRecentManager::roundTrip()
{
    QStringList recents;
    for (int i = 11; i >= 0; --i)
        recents << File(QStringLiteral("r%1.png").arg(i));
    OVRecentManager* m = Start();
    m->SetRecentsNumber(12);
    m->SetFavoritesNumber(3);
    for (auto it = recents.crbegin(); it != recents.crend(); ++it)
        m->PushRecent(*it);
    m->PushFavorite(File(QStringLiteral("f.png")));
    OVRecentManager::ReleaseInstance();

    QSettings stored(UserIni(), QSettings::IniFormat);
    QCOMPARE(stored.value("RecentLimit").toInt(), 12);
    QCOMPARE(stored.value("FavoriteLimit").toInt(), 3);
    QCOMPARE(Decoded(stored.value("RecentFiles")), recents);
    QCOMPARE(Decoded(stored.value("FavoriteFiles")), QStringList{File(QStringLiteral("f.png"))});

    // Deleted behind the editor's back: gone after the restart.
    QVERIFY(QFile::remove(recents.takeAt(3)));
    OVRecentManager::InitInstance();
    m = OVRecentManager::GetInstance();
    QCOMPARE(m->GetRecents(), recents);
    QCOMPARE(m->GetFavorites(), QStringList{File(QStringLiteral("f.png"))});
    QCOMPARE(m->GetRecentsNumber(), 12);
    QCOMPARE(m->GetFavoritesNumber(), 3);
    // Item data is for paths pushed since start.
    QSignalSpy changed(m, &OVRecentManager::RecentDataChanged);
    m->SetItemData(recents.first(), 1, 2);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m->GetItemData(recents.first(), 1, -1), QVariant(-1));

    // Stored limits are bounded; at most the limit is read.
    m = Start({{"RecentLimit", 40}, {"FavoriteLimit", -2}, {"RecentFiles", Stored(12, recents)}});
    QCOMPARE(m->GetRecentsNumber(), 15);
    QCOMPARE(m->GetFavoritesNumber(), 0);
    QCOMPARE(m->GetRecents(), recents);
    m = Start({{"RecentLimit", 2}, {"RecentFiles", Stored(12, recents)}});
    QCOMPARE(m->GetRecents(), recents.mid(0, 2));
    m->SetRecentsNumber(40);
    QCOMPARE(m->GetRecentsNumber(), 40);
}

void TestRecentManager::badStoredValues_data()
{
    QTest::addColumn<QVariant>("limit");
    QTest::addColumn<QVariant>("files");
    QTest::addColumn<QStringList>("expected");
    const QString a = File(QStringLiteral("a.png"));
    const QString b = File(QStringLiteral("b.png"));
    QByteArray oddLength = Stored(1, {});
    oddLength.append("\0\0\0\x03xyz", 7);
    QByteArray tooLong = Stored(1, {});
    tooLong.append("\x7f\xff\xff\xfe\0a", 6);

    QTest::newRow("not a byte array") << QVariant(10) << QVariant(QStringLiteral("abc def")) << QStringList();
    QTest::newRow("a list") << QVariant(10) << QVariant(QStringList{a, b}) << QStringList();
    QTest::newRow("truncated") << QVariant(10) << QVariant(Stored(2, {a, b}).chopped(3)) << QStringList{a};
    QTest::newRow("count of two billion")
        << QVariant(10) << QVariant(Stored(2000000000, {a, b})) << QStringList{a, b};
    QTest::newRow("negative count") << QVariant(10) << QVariant(Stored(-3, {a})) << QStringList();
    QTest::newRow("not paths") << QVariant(10)
                               << QVariant(Stored(4, {QString(), QString(QChar(0)) + a, "no/such/file", b}))
                               << QStringList{b};
    QTest::newRow("odd string length") << QVariant(10) << QVariant(oddLength) << QStringList();
    QTest::newRow("length beyond the bytes") << QVariant(10) << QVariant(tooLong) << QStringList();
    QTest::newRow("limit not a number")
        << QVariant("many") << QVariant(Stored(2, {a, b})) << QStringList{a, b};
}

void TestRecentManager::badStoredValues()
{
    QFETCH(QVariant, limit);
    QFETCH(QVariant, files);
    OVRecentManager* m = Start({{"RecentLimit", limit}, {"RecentFiles", files}, {"FavoriteFiles", files}});
    QTEST(m->GetRecents(), "expected");
    QCOMPARE(m->GetRecentsNumber(), limit.toInt() ? limit.toInt() : 10);
    QTEST(m->GetFavorites(), "expected");
    QCOMPARE(log->Entries(), QStringList());
}

OV_TEST_MAIN(TestRecentManager)
#include "tst_recentmanager.moc"
