// File bookmarks: when handles begin and end access to their paths, seen through the store.

#include "OVFileBookmark.h"
#include "private/OVFileBookmark_p.h"

#include <QRandomGenerator>
#include <QtTest>

#include <optional>

namespace {

QStringList s_calls;
// Accesses begun and not yet ended, per path; below zero when an access ends that never began.
QMap<QString, int> s_open;

void Record(FileBookmarkStore::Operation operation, const QString& path)
{
    s_calls << QStringLiteral("%1 %2").arg(QStringList({"begin", "end", "add"}).at(operation), path);
    s_open[path] += operation == FileBookmarkStore::BeginAccess ? 1
                    : operation == FileBookmarkStore::EndAccess ? -1
                                                                : 0;
    if (s_open[path] < 0)
        qFatal("Access to %s ended more often than it began", qPrintable(path));
}

} // namespace

class TestFileBookmark : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FileBookmarkStore::SetObserver(&Record); }

    void storeCalls()
    {
        {
            const OVFileBookmark empty;
            OVFileBookmark a(QStringLiteral("/a"));
            a.Acquire(QStringLiteral("/a"));
            OVFileBookmark copy(a);
            a.Acquire(QStringLiteral("/b"));
            a.Release();
            a.Release();
            OVFileBookmark& same = copy;
            copy = same;
            copy = empty;
            copy.Release();
            a.Acquire(QStringLiteral("/b"));
            OVFileBookmark::AddBookmark(QStringLiteral("/x"));
        }
        QCOMPARE(s_calls, QStringList({"begin /a", "begin /a", "end /a", "begin /b", "end /b", "end /a",
                                       "begin /b", "add /x", "end /b"}));
    }

    // Handles made, copied, assigned, moved to other paths, released and destroyed at random.
    void randomUseStaysBalanced()
    {
        s_calls.clear();
        const QString paths[] = {QString(), QStringLiteral("/a"), QStringLiteral("/b")};
        QRandomGenerator random(12);
        {
            std::optional<OVFileBookmark> handles[4];
            for (int step = 0; step < 4000; ++step) {
                std::optional<OVFileBookmark>& some = handles[random.bounded(4)];
                const std::optional<OVFileBookmark>& other = handles[random.bounded(4)];
                const QString& path = paths[random.bounded(3)];
                const int operation = random.bounded(5);
                if (operation == 0)
                    some.emplace(path);
                else if (operation == 1 && other && &other != &some)
                    some.emplace(*other);
                else if (operation == 2 && some && other)
                    *some = *other;
                else if (operation == 3 && some)
                    some->Acquire(path);
                else if (operation == 4 && some)
                    random.bounded(2) ? some->Release() : some.reset();
            }
        }
        QVERIFY(s_calls.size() > 1000);
        QVERIFY(std::all_of(s_open.cbegin(), s_open.cend(), [](int open) { return open == 0; }));
    }
};

QTEST_GUILESS_MAIN(TestFileBookmark)

#include "tst_filebookmark.moc"
