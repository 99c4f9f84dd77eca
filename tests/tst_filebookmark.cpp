// File bookmarks: when handles begin and end access to their paths, seen through the store.

#include "OVFileBookmark.h"
#include "private/OVFileBookmark_p.h"

#include <QtTest>

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
        // Every access that began has ended.
        QVERIFY(std::all_of(s_open.cbegin(), s_open.cend(), [](int open) { return open == 0; }));
    }
};

QTEST_GUILESS_MAIN(TestFileBookmark)

#include "tst_filebookmark.moc"
