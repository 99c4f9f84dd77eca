// The application object: identity, start-up, resource folder, signals and their order, the
// build-log line, and the platform information it gives.

#include "OVApplication.h"
#include "OVPixelRatioRound.h"
#include "OVTestSupport.h"
#include "private/OVBuildLog_p.h"

#include <QAction>

using A = OVApplication;

namespace {
QStringList s_categories;
} // namespace

class TestApplication : public QObject
{
    Q_OBJECT
private slots:
    // Must stay the process's first calls: the kept name lives as long as the process.
    void osNameKeepsFirstResult()
    {
        QCOMPARE(A::GetOSName(A::OSVersion(13), A::Workstation), QString());
        QCOMPARE(A::GetOSName(A::Windows7, A::Server), "Windows7Server");
        QCOMPARE(A::GetOSName(A::Windows10, A::Workstation), "Windows7Server");
    }

    void startup()
    {
        QCOMPARE(A::GetInstance(), qobject_cast<A*>(qApp));
        const QString dataFolder = OVTest::SandboxPath() + "/appdata/Tamsendo/Orvelin";
        const QString userDataFolder = OVTest::SandboxPath() + "/home/AppData/Local/Tamsendo/Orvelin";
        QCOMPARE(A::GetDataFolder(), dataFolder);
        QCOMPARE(A::GetUserDataFolder(), userDataFolder);
        // Only the user data folder is made at start-up.
        QVERIFY(QFileInfo(userDataFolder).isDir());
        QVERIFY(!QFileInfo::exists(dataFolder));
        QVERIFY(!QFileInfo::exists(userDataFolder + "/user.ini"));

        const qreal ratio = qApp->devicePixelRatio();
        QCOMPARE(OVPixelRatioRound::GetPixelRatio(), ratio);
        const auto line =
            OVTest::BuildLogLine("src\\private\\OVApplication_p.cpp", QString::number(ratio, 'g', 6));
        QCOMPARE(OVTest::StartupMessages().filter(line).size(), 1);
    }

    void resourcePath()
    {
        const QString appDir = QCoreApplication::applicationDirPath();
        const QString resources = QDir::cleanPath(appDir + "/../Resources");
        QDir(resources).removeRecursively();
        // Without a sibling Resources folder the application folder serves, and says so.
        OVTest::LogCapture log;
        QCOMPARE(A::GetResourcePath(), QDir(appDir).absolutePath());
        QVERIFY(QDir().mkpath(resources));
        QCOMPARE(A::GetResourcePath(), resources);
        QCOMPARE(log.Messages().filter(
                     OVTest::BuildLogLine("src\\OVApplication.cpp", "The Resouces folder does not exist")),
                 log.Messages());
        QCOMPARE(log.Messages().size(), 1);
        QVERIFY(QDir(resources).removeRecursively());
    }

    void signalSequence()
    {
        A* app = A::GetInstance();
        OVTest::SignalLog log;
        log.RecordByName(app, &A::RecentColorChanged, &A::RecentPickerChanged, &A::RefineSelectionRegistered,
                         &A::FlushPluginData, &A::AboutActivated, &A::AboutDeactivated);
        QAction refineA, refineB;
        refineA.setObjectName("A");
        refineB.setObjectName("B");

        app->RegisterRefineSelectionAction(&refineA);
        app->RegisterRefineSelectionAction(&refineA);
        app->RegisterRefineSelectionAction(&refineB);
        QCOMPARE(app->GetRefineSelection(), &refineB);
        app->SetRecentColor(QColor(Qt::red));
        app->SetRecentColor(QColor(Qt::red));
        app->SetRecentPicker(QColor(Qt::red));
        app->SetRecentPicker(QColor(Qt::blue));
        app->SetRecentColor(QColor());
        A::FlushData();
        for (QEvent::Type type :
             {QEvent::ApplicationActivate, QEvent::ApplicationStateChange, QEvent::ApplicationDeactivate}) {
            QEvent event(type);
            QCoreApplication::sendEvent(app, &event);
        }
        app->RegisterRefineSelectionAction(nullptr);
        app->RegisterRefineSelectionAction(nullptr);

        QCOMPARE(log.Entries(),
                 OVTest::Words("RefineSelectionRegistered(A) RefineSelectionRegistered(B) "
                               "RecentColorChanged(#ffff0000) RecentPickerChanged(#ffff0000) "
                               "RecentPickerChanged(#ff0000ff) RecentColorChanged(invalid) FlushPluginData() "
                               "AboutActivated() AboutDeactivated() RefineSelectionRegistered(null)"));
        QCOMPARE(app->GetRefineSelection(), nullptr);
    }

    void buildLogLine()
    {
        OVTest::LogCapture log;
        // The message is filled last, so place markers in it are left alone.
        OV_BUILD_LOG_AT(285, "src\\private\\OVImageFileManager_p.cpp", "w %9");
        QCOMPARE(log.Messages(),
                 QStringList{QStringLiteral("\"Build date=%1, time=%2. Line=285, "
                                            "file=\\\"src\\\\private\\\\OVImageFileManager_p.cpp\\\". w %9\"")
                                 .arg(QString::fromLatin1(__DATE__), QString::fromLatin1(__TIME__))});
        // Every line is a debug message of the "ovcore" category, which the logging rules can
        // silence.
        const QtMessageHandler previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString&) {
                s_categories << QString::fromLatin1(context.category);
            });
        OV_BUILD_LOG("one");
        QLoggingCategory::setFilterRules("ovcore.debug=false");
        OV_BUILD_LOG("two");
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(previous);
        QCOMPARE(s_categories, QStringList{"ovcore"});
    }

    void buildLogSourcePath_data()
    {
        OVTest::Columns<QString, QString>({"file", "expected"});
        OVTest::Row("private", QStringLiteral(OVCORE_SOURCE_ROOT "src/private/OVApplication_p.cpp"),
                    "src\\private\\OVApplication_p.cpp");
        OVTest::Row("relative to the build", "../../src/OVApplication.cpp", "src\\OVApplication.cpp");
        OVTest::Row("outside", "/elsewhere/x.cpp", "\\elsewhere\\x.cpp");
    }
    void buildLogSourcePath()
    {
        QFETCH(QString, file);
        QTEST(OVBuildLog::SourcePath(file.toUtf8().constData()), "expected");
    }

    void osVersion()
    {
#ifdef Q_OS_WIN
        QSKIP("The Windows answers are checked by the platform layer's own test program");
#endif
        // No Windows version here: no name and no version line, and the kernel's numbers.
        OVTest::LogCapture log;
        QCOMPARE(A::GetOSVersion(), A::Unknown);
        QVERIFY(log.Matching("Version ").isEmpty());
        const QRegularExpressionMatch kernel =
            QRegularExpression("^(\\d+)(?:\\.(\\d+))?(?:\\.(\\d+))?").match(QSysInfo::kernelVersion());
        QCOMPARE(A::GetOSVersionString(),
                 QString::asprintf("%d.%d.%d", kernel.captured(1).toInt(), kernel.captured(2).toInt(),
                                   kernel.captured(3).toInt()));
        QCOMPARE(A::GetOSType(), A::Workstation);
    }
};

OV_TEST_MAIN(TestApplication)
#include "tst_application.moc"
