// The application object: identity, start-up, resource folder, signals and their order.

#include "OVApplication.h"
#include "OVPixelRatioRound.h"
#include "OVTestSupport.h"

#include <QAction>
#include <QDir>
#include <QMetaMethod>

namespace {
// Lines written while the application object was being constructed.
OVTest::LogCapture* s_startupLog = nullptr;

// Matches one build-log line as qDebug() prints it (quoted, with \" and \\ escaped).
QRegularExpression BuildLogLine(const QString& file, const QString& message)
{
    QString escapedFile = file;
    escapedFile.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    return QRegularExpression(
        QStringLiteral(
            "^\"Build date=[A-Z][a-z]{2} [ 0-9]\\d \\d{4}, time=\\d\\d:\\d\\d:\\d\\d\\. Line=\\d+, "
            "file=\\\\\"%1\\\\\"\\. %2\"$")
            .arg(QRegularExpression::escape(escapedFile), QRegularExpression::escape(message)));
}

QStringList Grep(const QStringList& lines, const QRegularExpression& re)
{
    QStringList found;
    for (const QString& line : lines)
        if (re.match(line).hasMatch())
            found << line;
    return found;
}
} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void startupFoldersAndAttributes();
    void startupLogsPixelRatio();
    void resourcePath();
    void signalsInDeclaredOrder();
    void signalSequence();
};

void TestApplication::startupFoldersAndAttributes()
{
    QCOMPARE(OVApplication::GetInstance(), qobject_cast<OVApplication*>(qApp));
    QVERIFY(OVApplication::GetInstance());
    const QString sandbox = OVTest::SandboxPath();
    const QString dataFolder = sandbox + QStringLiteral("/appdata/Tamsendo/Orvelin");
    const QString userDataFolder = sandbox + QStringLiteral("/home/AppData/Local/Tamsendo/Orvelin");

    QCOMPARE(OVApplication::GetDataFolder(), dataFolder);
    QCOMPARE(OVApplication::GetUserDataFolder(), userDataFolder);
    // Only the user data folder is made at start-up.
    QVERIFY(QFileInfo(userDataFolder).isDir());
    QVERIFY(!QFileInfo::exists(dataFolder));
    QVERIFY(!QFileInfo::exists(userDataFolder + QStringLiteral("/user.ini")));

    QVERIFY(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
    QVERIFY(QCoreApplication::testAttribute(Qt::AA_DontShowIconsInMenus));
}

void TestApplication::startupLogsPixelRatio()
{
    const qreal ratio = qApp->devicePixelRatio();
    QCOMPARE(OVPixelRatioRound::GetPixelRatio(), ratio);
    const QStringList lines =
        Grep(s_startupLog->Messages(), BuildLogLine(QStringLiteral("src\\private\\OVApplication_p.cpp"),
                                                    QString::number(ratio, 'g', 6)));
    QCOMPARE(lines.size(), 1);
}

void TestApplication::resourcePath()
{
    const QString appDir = QCoreApplication::applicationDirPath();
    const QString resources = QDir::cleanPath(appDir + QStringLiteral("/../Resources"));
    QDir(resources).removeRecursively();

    // Without a sibling Resources folder the application folder serves, and says so.
    {
        OVTest::LogCapture log;
        QCOMPARE(OVApplication::GetResourcePath(), QDir(appDir).absolutePath());
        const QStringList lines =
            Grep(log.Messages(), BuildLogLine(QStringLiteral("src\\OVApplication.cpp"),
                                              QStringLiteral("The Resouces folder does not exist")));
        QCOMPARE(lines.size(), 1);
        QCOMPARE(log.Messages().size(), 1);
    }

    QVERIFY(QDir().mkpath(resources));
    {
        OVTest::LogCapture log;
        QCOMPARE(OVApplication::GetResourcePath(), resources);
        QVERIFY(log.Messages().isEmpty());
    }
    QVERIFY(QDir(resources).removeRecursively());
}

void TestApplication::signalsInDeclaredOrder()
{
    const QMetaObject* meta = &OVApplication::staticMetaObject;
    QStringList methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        methods << QString::fromLatin1(meta->method(i).methodSignature());
    const QStringList expected = OVTest::Words(
        "BackgroundChanged() ForegroundChanged() RecentColorChanged(QColor) RecentPickerChanged(QColor) "
        "MaskBackgroundChanged() MaskForegroundChanged() TexturePatternChanged(int) PluginLoading(QString) "
        "PluginLoaded(QString) PluginLoadingError(QString,QString) PluginsLoadingFinished() "
        "RefineSelectionRegistered(QAction*) FlushPluginData() AboutActivated() AboutDeactivated()");
    QCOMPARE(methods, expected);
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        QCOMPARE(meta->method(i).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

void TestApplication::signalSequence()
{
    OVApplication* app = OVApplication::GetInstance();
    OVTest::SignalLog log;
    log.Record(app, &OVApplication::RecentColorChanged, "RecentColorChanged");
    log.Record(app, &OVApplication::RecentPickerChanged, "RecentPickerChanged");
    log.Record(app, &OVApplication::RefineSelectionRegistered, "RefineSelectionRegistered");
    log.Record(app, &OVApplication::FlushPluginData, "FlushPluginData");
    log.Record(app, &OVApplication::AboutActivated, "AboutActivated");
    log.Record(app, &OVApplication::AboutDeactivated, "AboutDeactivated");

    QAction refineA;
    refineA.setObjectName(QStringLiteral("A"));
    QAction refineB;
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
    QEvent activate(QEvent::ApplicationActivate);
    QEvent deactivate(QEvent::ApplicationDeactivate);
    QEvent other(QEvent::ApplicationStateChange);
    QCoreApplication::sendEvent(app, &activate);
    QCoreApplication::sendEvent(app, &other);
    QCoreApplication::sendEvent(app, &deactivate);
    app->RegisterRefineSelectionAction(nullptr);
    app->RegisterRefineSelectionAction(nullptr);

    const QStringList expected = OVTest::Words(
        "RefineSelectionRegistered(A) RefineSelectionRegistered(B) RecentColorChanged(#ffff0000) "
        "RecentPickerChanged(#ffff0000) RecentPickerChanged(#ff0000ff) RecentColorChanged(invalid) "
        "FlushPluginData() AboutActivated() AboutDeactivated() RefineSelectionRegistered(null)");
    QCOMPARE(log.Entries(), expected);
    QCOMPARE(app->GetRefineSelection(), nullptr);
}

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
