// The one diagnostic line format of the library, and its logging category.

#include "OVTestSupport.h"
#include "private/OVBuildLog_p.h"

#include <QLoggingCategory>

namespace {
QStringList s_categories;
void RecordCategory(QtMsgType, const QMessageLogContext& context, const QString&)
{
    s_categories << QString::fromLatin1(context.category);
}
} // namespace

class TestBuildLog : public QObject
{
    Q_OBJECT

private slots:
    void writesOneQuotedDebugLine()
    {
        OVTest::LogCapture log;
        // The message is filled last, so place markers in it are left alone.
        OV_BUILD_LOG_AT(285, QStringLiteral("src\\private\\OVImageFileManager_p.cpp"),
                        QStringLiteral("w %9"));
        const QString expected =
            QStringLiteral("\"Build date=%1, time=%2. Line=285, "
                           "file=\\\"src\\\\private\\\\OVImageFileManager_p.cpp\\\". w %9\"")
                .arg(QString::fromLatin1(__DATE__), QString::fromLatin1(__TIME__));
        QCOMPARE(log.Messages(), QStringList{expected});

        // Every line is a debug message of the "ovcore" category, which the logging rules can
        // silence.
        const QtMessageHandler previous = qInstallMessageHandler(&RecordCategory);
        OV_BUILD_LOG(QStringLiteral("one"));
        QLoggingCategory::setFilterRules(QStringLiteral("ovcore.debug=false"));
        OV_BUILD_LOG(QStringLiteral("two"));
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(previous);
        QCOMPARE(s_categories, QStringList{"ovcore"});
    }

    void sourcePath_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("expected");
        const QString root = QStringLiteral(OVCORE_SOURCE_ROOT);
        QTest::newRow("private") << root + QStringLiteral("src/private/OVApplication_p.cpp")
                                 << QStringLiteral("src\\private\\OVApplication_p.cpp");
        QTest::newRow("relative to the build")
            << QStringLiteral("../../src/OVApplication.cpp") << QStringLiteral("src\\OVApplication.cpp");
        QTest::newRow("outside") << QStringLiteral("/elsewhere/x.cpp")
                                 << QStringLiteral("\\elsewhere\\x.cpp");
    }
    void sourcePath()
    {
        QFETCH(QString, file);
        QTEST(OVBuildLog::SourcePath(file.toUtf8().constData()), "expected");
    }
};

QTEST_GUILESS_MAIN(TestBuildLog)

#include "tst_buildlog.moc"
