// The one diagnostic line format of the library.

#include "OVTestSupport.h"
#include "private/OVBuildLog_p.h"

class TestBuildLog : public QObject
{
    Q_OBJECT

private slots:
    void format_data();
    void format();
    void writesOneQuotedDebugLine();
    void sourcePath_data();
    void sourcePath();
};

void TestBuildLog::format_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("expected");

    QTest::newRow("fixed place") << 521 << QStringLiteral("src\\private\\OVImageFileManager_p.cpp")
                                 << QStringLiteral("{A} uid is not unique.")
                                 << QStringLiteral("Build date=Nov  3 2026, time=01:02:03. Line=521, "
                                                   "file=\"src\\private\\OVImageFileManager_p.cpp\". "
                                                   "{A} uid is not unique.");
    // The message is filled last, so place markers in it are left alone.
    QTest::newRow("markers in message")
        << 7 << QStringLiteral("src\\OVApplication.cpp") << QStringLiteral("100%1 %2 done")
        << QStringLiteral("Build date=Nov  3 2026, time=01:02:03. Line=7, "
                          "file=\"src\\OVApplication.cpp\". 100%1 %2 done");
    QTest::newRow("empty message") << 0 << QString() << QString()
                                   << QStringLiteral(
                                          "Build date=Nov  3 2026, time=01:02:03. Line=0, file=\"\". ");
}

void TestBuildLog::format()
{
    QFETCH(int, line);
    QFETCH(QString, file);
    QFETCH(QString, message);
    QFETCH(QString, expected);
    QCOMPARE(OVBuildLog::Format("Nov  3 2026", "01:02:03", line, file, message), expected);
}

void TestBuildLog::writesOneQuotedDebugLine()
{
    OVTest::LogCapture log;
    OV_BUILD_LOG_AT(285, QStringLiteral("src\\private\\OVImageFileManager_p.cpp"),
                    QStringLiteral("w uid is not unique."));
    const QString expected = QStringLiteral("\"Build date=%1, time=%2. Line=285, "
                                            "file=\\\"src\\\\private\\\\OVImageFileManager_p.cpp\\\". "
                                            "w uid is not unique.\"")
                                 .arg(QString::fromLatin1(__DATE__), QString::fromLatin1(__TIME__));
    QCOMPARE(log.Messages(), QStringList{expected});

    log.Clear();
    const int line = __LINE__ + 1;
    OV_BUILD_LOG(QStringLiteral("here"));
    QCOMPARE(log.Messages().size(), 1);
    QVERIFY2(log.Messages().first().contains(
                 QStringLiteral("Line=%1, file=\\\"tests\\\\tst_buildlog.cpp\\\". here").arg(line)),
             qPrintable(log.Messages().first()));
}

void TestBuildLog::sourcePath_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("expected");
    const QString root = QStringLiteral(OVCORE_SOURCE_ROOT);
    QTest::newRow("public") << root + QStringLiteral("src/OVApplication.cpp")
                            << QStringLiteral("src\\OVApplication.cpp");
    QTest::newRow("private") << root + QStringLiteral("src/private/OVApplication_p.cpp")
                             << QStringLiteral("src\\private\\OVApplication_p.cpp");
    QTest::newRow("outside") << QStringLiteral("/elsewhere/x.cpp") << QStringLiteral("\\elsewhere\\x.cpp");
}

void TestBuildLog::sourcePath()
{
    QFETCH(QString, file);
    QFETCH(QString, expected);
    QCOMPARE(OVBuildLog::SourcePath(file.toUtf8().constData()), expected);
}

QTEST_GUILESS_MAIN(TestBuildLog)

#include "tst_buildlog.moc"
