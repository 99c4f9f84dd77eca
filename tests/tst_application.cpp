// The application object: identity, start-up, resource folder, signals and their order.

#include "OVApplication.h"
#include "OVPixelRatioRound.h"
#include "OVTestSupport.h"

#include <QAction>
#include <QDir>

namespace {
// Lines written while the application object was being constructed.
OVTest::LogCapture* s_startupLog = nullptr;
} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void startupFoldersAndAttributes()
    {
        QCOMPARE(OVApplication::GetInstance(), qobject_cast<OVApplication*>(qApp));
        const QString sandbox = OVTest::SandboxPath();
        const QString dataFolder = sandbox + QStringLiteral("/appdata/Tamsendo/Orvelin");
        const QString userDataFolder = sandbox + QStringLiteral("/home/AppData/Local/Tamsendo/Orvelin");

        QCOMPARE(OVApplication::GetDataFolder(), dataFolder);
        QCOMPARE(OVApplication::GetUserDataFolder(), userDataFolder);
        // Only the user data folder is made at start-up.
        QVERIFY(QFileInfo(userDataFolder).isDir());
        QVERIFY(!QFileInfo::exists(dataFolder));
        QVERIFY(!QFileInfo::exists(userDataFolder + QStringLiteral("/user.ini")));
    }

    void startupLogsPixelRatio()
    {
        const qreal ratio = qApp->devicePixelRatio();
        QCOMPARE(OVPixelRatioRound::GetPixelRatio(), ratio);
        QCOMPARE(s_startupLog->Messages()
                     .filter(OVTest::BuildLogLine(QStringLiteral("src\\private\\OVApplication_p.cpp"),
                                                  QString::number(ratio, 'g', 6)))
                     .size(),
                 1);
    }

    void resourcePath()
    {
        const QString appDir = QCoreApplication::applicationDirPath();
        const QString resources = QDir::cleanPath(appDir + QStringLiteral("/../Resources"));
        QDir(resources).removeRecursively();

        // Without a sibling Resources folder the application folder serves, and says so.
        OVTest::LogCapture log;
        QCOMPARE(OVApplication::GetResourcePath(), QDir(appDir).absolutePath());
        QVERIFY(QDir().mkpath(resources));
        QCOMPARE(OVApplication::GetResourcePath(), resources);
        QCOMPARE(log.Messages().size(), 1);
        QCOMPARE(log.Messages().filter(
                     OVTest::BuildLogLine("src\\OVApplication.cpp", "The Resouces folder does not exist")),
                 log.Messages());
        QVERIFY(QDir(resources).removeRecursively());
    }

    void signalSequence()
    {
        OVApplication* app = OVApplication::GetInstance();
        OVTest::SignalLog log;
        log.RecordByName(app, &OVApplication::RecentColorChanged, &OVApplication::RecentPickerChanged,
                         &OVApplication::RefineSelectionRegistered, &OVApplication::FlushPluginData,
                         &OVApplication::AboutActivated, &OVApplication::AboutDeactivated);

        QAction refineA, refineB;
        refineA.setObjectName(QStringLiteral("A"));
        refineB.setObjectName(QStringLiteral("B"));

        app->RegisterRefineSelectionAction(&refineA);
        app->RegisterRefineSelectionAction(&refineA);
        app->RegisterRefineSelectionAction(&refineB);
        QCOMPARE(app->GetRefineSelection(), &refineB);
        app->SetRecentColor(QColor(Qt::red));
        app->SetRecentColor(QColor(Qt::red));
        app->SetRecentPicker(QColor(Qt::red));
        app->SetRecentPicker(QColor(Qt::blue));
        app->SetRecentColor(QColor());
        OVApplication::FlushData();
        for (QEvent::Type type :
             {QEvent::ApplicationActivate, QEvent::ApplicationStateChange, QEvent::ApplicationDeactivate}) {
            QEvent event(type);
            QCoreApplication::sendEvent(app, &event);
        }
        app->RegisterRefineSelectionAction(nullptr);
        app->RegisterRefineSelectionAction(nullptr);

        const QStringList expected = OVTest::Words(
            "RefineSelectionRegistered(A) RefineSelectionRegistered(B) RecentColorChanged(#ffff0000) "
            "RecentPickerChanged(#ffff0000) RecentPickerChanged(#ff0000ff) RecentColorChanged(invalid) "
            "FlushPluginData() AboutActivated() AboutDeactivated() RefineSelectionRegistered(null)");
        QCOMPARE(log.Entries(), expected);
        QCOMPARE(app->GetRefineSelection(), nullptr);
    }
};

int main(int argc, char** argv)
{
    OVTest::IsolateEnvironment();
    OVTest::LogCapture startupLog;
    s_startupLog = &startupLog;
    OVApplication app(argc, argv);
    TestApplication test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_application.moc"
