// File bookmarks: when a handle begins and ends access to its path, seen through the store.

#include "OVFileBookmark.h"
#include "private/OVFileBookmark_p.h"

#include <QRandomGenerator>
#include <QtTest>

#include <functional>
#include <memory>
#include <vector>

namespace {

QStringList s_calls;

void Record(FileBookmarkStore::Operation operation, const QString& path)
{
    static const char* const kNames[] = {"begin", "end", "add"};
    s_calls << QLatin1String(kNames[operation]) + QLatin1Char(' ') + path;
}

// Every begin is ended exactly once for its path, never before it began.
void VerifyBalanced(const QStringList& calls)
{
    QMap<QString, int> open;
    for (const QString& call : calls) {
        const QString path = call.section(QLatin1Char(' '), 1);
        if (call.startsWith(QLatin1String("begin ")))
            ++open[path];
        else if (call.startsWith(QLatin1String("end ")))
            QVERIFY2(--open[path] >= 0, qPrintable(calls.join(QLatin1String(", "))));
    }
    for (auto it = open.cbegin(); it != open.cend(); ++it)
        QVERIFY2(it.value() == 0, qPrintable(it.key() + QStringLiteral(" left open")));
}

} // namespace

Q_DECLARE_METATYPE(std::function<void()>)

class TestFileBookmark : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FileBookmarkStore::SetObserver(&Record); }
    void cleanupTestCase() { FileBookmarkStore::SetObserver(nullptr); }
    void init() { s_calls.clear(); }
    void storeCalls_data();
    void storeCalls();
    void randomUseStaysBalanced();
};

void TestFileBookmark::storeCalls_data()
{
    using Calls = QStringList;
    QTest::addColumn<std::function<void()>>("use");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("empty handle") << std::function<void()>([] { OVFileBookmark b; }) << Calls();
    QTest::newRow("path") << std::function<void()>([] { OVFileBookmark b(QStringLiteral("/a")); })
                          << Calls({"begin /a", "end /a"});
    QTest::newRow("same path again") << std::function<void()>([] {
        OVFileBookmark b(QStringLiteral("/a"));
        b.Acquire(QStringLiteral("/a"));
    }) << Calls({"begin /a", "end /a"});
    QTest::newRow("other path") << std::function<void()>([] {
        OVFileBookmark b(QStringLiteral("/a"));
        b.Acquire(QStringLiteral("/b"));
    }) << Calls({"begin /a", "end /a", "begin /b", "end /b"});
    QTest::newRow("empty path") << std::function<void()>([] {
        OVFileBookmark b(QStringLiteral("/a"));
        b.Acquire(QString());
    }) << Calls({"begin /a", "end /a"});
    QTest::newRow("release twice, acquire kept path") << std::function<void()>([] {
        OVFileBookmark b(QStringLiteral("/a"));
        b.Release();
        b.Release();
        b.Acquire(QStringLiteral("/a"));
    }) << Calls({"begin /a", "end /a", "begin /a", "end /a"});
    QTest::newRow("copy") << std::function<void()>([] {
        OVFileBookmark a(QStringLiteral("/a"));
        OVFileBookmark b(a);
    }) << Calls({"begin /a", "begin /a", "end /a", "end /a"});
    QTest::newRow("copy of released") << std::function<void()>([] {
        OVFileBookmark a(QStringLiteral("/a"));
        a.Release();
        OVFileBookmark b(a);
    }) << Calls({"begin /a", "end /a", "begin /a", "end /a"});
    QTest::newRow("assign") << std::function<void()>([] {
        OVFileBookmark a(QStringLiteral("/a"));
        OVFileBookmark b(QStringLiteral("/b"));
        b = a;
    }) << Calls({"begin /a", "begin /b", "end /b", "begin /a", "end /a", "end /a"});
    QTest::newRow("assign to itself") << std::function<void()>([] {
        OVFileBookmark a(QStringLiteral("/a"));
        OVFileBookmark& same = a;
        a = same;
    }) << Calls({"begin /a", "end /a"});
    QTest::newRow("assign empty") << std::function<void()>([] {
        OVFileBookmark empty;
        OVFileBookmark b(QStringLiteral("/b"));
        b = empty;
        b.Release();
    }) << Calls({"begin /b", "end /b"});
    QTest::newRow("add bookmark") << std::function<void()>([] {
        OVFileBookmark::AddBookmark(QStringLiteral("/x"));
    }) << Calls({"add /x"});
}

void TestFileBookmark::storeCalls()
{
    QFETCH(std::function<void()>, use);
    QFETCH(QStringList, expected);
    use();
    QCOMPARE(s_calls, expected);
    VerifyBalanced(s_calls);
}

// Handles made, copied, assigned, moved between paths, released and destroyed at random.
void TestFileBookmark::randomUseStaysBalanced()
{
    const QString paths[] = {QString(), QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/c")};
    QRandomGenerator random(12);
    std::vector<std::unique_ptr<OVFileBookmark>> handles;
    for (int step = 0; step < 2000; ++step) {
        const QString& path = paths[random.bounded(4)];
        OVFileBookmark* some = handles.empty() ? nullptr : handles[random.bounded(int(handles.size()))].get();
        switch (random.bounded(6)) {
        case 0:
            handles.push_back(std::make_unique<OVFileBookmark>(path));
            break;
        case 1:
            if (some)
                handles.push_back(std::make_unique<OVFileBookmark>(*some));
            break;
        case 2:
            if (some)
                *some = *handles[random.bounded(int(handles.size()))];
            break;
        case 3:
            if (some)
                some->Acquire(path);
            break;
        case 4:
            if (some)
                some->Release();
            break;
        case 5:
            if (!handles.empty())
                handles.erase(handles.begin() + random.bounded(int(handles.size())));
            break;
        }
    }
    handles.clear();
    QVERIFY(s_calls.size() > 1000);
    VerifyBalanced(s_calls);
}

QTEST_GUILESS_MAIN(TestFileBookmark)

#include "tst_filebookmark.moc"
