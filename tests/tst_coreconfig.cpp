// The telemetry configuration lookup over ":core" documents that each case registers for
// itself from an ".rcc" file made at build time.

#include "OVTestSupport.h"
#include "private/OVCoreConfig_p.h"

#include <QResource>

class TestCoreConfig : public QObject
{
    Q_OBJECT

private slots:
    void lookup_data();
    void lookup();
};

void TestCoreConfig::lookup_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");

    QTest::newRow("value") << "basic"
                           << "node1/A0"
                           << "k";
    QTest::newRow("missing value") << "basic"
                                   << "node1/A2" << QString();
    QTest::newRow("main is not a segment") << "basic"
                                           << "main/node1/A0" << QString();
    QTest::newRow("case-sensitive") << "basic"
                                    << "Node1/A0" << QString();
    QTest::newRow("empty path") << "basic"
                                << "" << QString();
    QTest::newRow("hex between blanks and newlines") << "wrapped"
                                                     << "node1/A0"
                                                     << "k";

    // The first "main" in document order, deep inside another element.
    QTest::newRow("main below the root") << "nested"
                                         << "node1/A0"
                                         << "first";
    QTest::newRow("blanks kept") << "nested"
                                 << "node1/A5"
                                 << " word ";
    QTest::newRow("text of everything below") << "nested"
                                              << "node1/A4"
                                              << "acd";
    QTest::newRow("container text") << "nested"
                                    << "node1"
                                    << "first word acd";
    QTest::newRow("only the first node1") << "nested"
                                          << "node1/A2" << QString();
    QTest::newRow("no backtracking") << "nested"
                                     << "node2/A3" << QString();
    QTest::newRow("trailing empty segment") << "nested"
                                            << "node1/A0/" << QString();

    QTest::newRow("10 MB") << "big"
                           << "node1/A2"
                           << "end";
    QTest::newRow("10 MB value") << "big"
                                 << "node1/A0" << QString(5000000, QLatin1Char('v'));
    QTest::newRow("not hex") << "words"
                             << "node1/A0" << QString();
    QTest::newRow("not XML") << "unclosed"
                             << "node1/A0" << QString();
    QTest::newRow("no main") << "nomain"
                             << "node1/A0" << QString();
    QTest::newRow("empty") << "empty"
                           << "node1/A0" << QString();
    QTest::newRow("no resource") << ""
                                 << "node1/A0" << QString();
}

void TestCoreConfig::lookup()
{
    QFETCH(QString, document);
    QFETCH(QString, path);
    QFETCH(QString, expected);

    const QString rcc = QStringLiteral(OV_CORE_RCC_DIR "/%1.rcc").arg(document);
    QVERIFY(document.isEmpty() || QResource::registerResource(rcc));
    const QString value = ReadCoreConfigValue(path);
    if (!document.isEmpty())
        QVERIFY(QResource::unregisterResource(rcc));

    QCOMPARE(value, expected);
    QCOMPARE(value.isNull(), expected.isNull());
}

QTEST_GUILESS_MAIN(TestCoreConfig)
#include "tst_coreconfig.moc"
