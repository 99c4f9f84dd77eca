// The telemetry configuration lookup over ":core" documents that each case registers for
// itself from an ".rcc" file made at build time.

#include "OVTestSupport.h"
#include "private/OVCoreConfig_p.h"

class TestCoreConfig : public QObject
{
    Q_OBJECT
private slots:
    void lookup_data()
    {
        OVTest::Columns<QString, QString, QString>({"document", "path", "expected"});
        OVTest::Row("value", "basic", "node1/A0", "k");
        OVTest::Row("missing value", "basic", "node1/A2", QString());
        OVTest::Row("main is not a segment", "basic", "main/node1/A0", QString());
        OVTest::Row("case-sensitive", "basic", "Node1/A0", QString());
        OVTest::Row("empty path", "basic", "", QString());
        OVTest::Row("hex between blanks and newlines", "wrapped", "node1/A0", "k");
        // The first "main" in document order, deep inside another element.
        OVTest::Row("main below the root", "nested", "node1/A0", "first");
        OVTest::Row("blanks kept", "nested", "node1/A5", " word ");
        OVTest::Row("text of everything below", "nested", "node1", "first word acd");
        OVTest::Row("only the first node1", "nested", "node1/A2", QString());
        OVTest::Row("no backtracking", "nested", "node2/A3", QString());
        OVTest::Row("trailing empty segment", "nested", "node1/A0/", QString());
        OVTest::Row("10 MB", "big", "node1/A2", "end");
        OVTest::Row("10 MB value", "big", "node1/A0", QString(5000000, QLatin1Char('v')));
        OVTest::Row("not hex", "words", "node1/A0", QString());
        OVTest::Row("not XML", "unclosed", "node1/A0", QString());
        OVTest::Row("no main", "nomain", "node1/A0", QString());
        OVTest::Row("empty", "empty", "node1/A0", QString());
        OVTest::Row("no resource", "", "node1/A0", QString());
    }
    void lookup()
    {
        QFETCH(QString, document);
        QFETCH(QString, path);
        QFETCH(QString, expected);
        const QString rcc = QStringLiteral(OV_CORE_RCC_DIR "/%1.rcc").arg(document);
        QVERIFY(document.isEmpty() || QResource::registerResource(rcc));
        const QString value = ReadCoreConfigValue(path);
        QVERIFY(document.isEmpty() || QResource::unregisterResource(rcc));
        QCOMPARE(value, expected);
        QCOMPARE(value.isNull(), expected.isNull());
    }
};

QTEST_GUILESS_MAIN(TestCoreConfig)
#include "tst_coreconfig.moc"
