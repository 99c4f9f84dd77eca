// Plug-in loading with real plug-in libraries: discovery in the folders "plugins.ini" names, the
// records and their texts, the signals and events between files, registration, UIReady, unloading.

#include "IBrushFactory.h"
#include "OVApplication.h"
#include "OVImageFileManager.h"
#include "OVProfileFixtures.h"
#include "OVTestSupport.h"

namespace {

using OVTest::Words;
const QString kFixtures = QStringLiteral(OV_FIXTURE_PLUGIN_DIR);
const QString kSuffix = QStringLiteral(OV_PLUGIN_SUFFIX);

// The calls the fixture libraries noted since the last time, in order.
QStringList TakeFixtureCalls()
{
    const QStringList calls = qApp->property("ovFixtureCalls").toStringList();
    qApp->setProperty("ovFixtureCalls", QStringList());
    return calls;
}

// Qt's reason for not loading file, from a loader that is gone before the test loads it.
QString LoaderError(const QString& file)
{
    QPluginLoader probe(file);
    probe.instance();
    return probe.errorString();
}

// The signals of files that load, in order.
QStringList Loaded(const QStringList& files)
{
    QStringList signalList;
    for (const QString& file : files)
        signalList << "PluginLoading(" + file + ')' << "PluginLoaded(" + file + ')';
    return signalList;
}

QStringList Failed(const QString& file, const QString& error)
{
    return {"PluginLoading(" + file + ')', "PluginLoadingError(" + file + ',' + error + ')'};
}

QStringList LoadLines(const QStringList& messages)
{
    QStringList lines;
    for (const QString& message : messages)
        if (message.contains("Plugin: "))
            lines << message.section(QLatin1String("\". "), 1);
    return lines;
}

} // namespace

class TestPluginLoader : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        OVImageFileManager::InitInstance();
        using A = OVApplication;
        m_log.RecordByName(A::GetInstance(), &A::PluginLoading, &A::PluginLoaded, &A::PluginLoadingError,
                           &A::PluginsLoadingFinished);
    }

    void init()
    {
        ++m_round;
        QDir(Root() + "/Resources").removeRecursively();
        QDir(Root() + '/' + Plugins()).removeRecursively();
        // The application folder holds the test program and nothing else it could load.
        QDir bin(QCoreApplication::applicationDirPath());
        for (const QString& library : bin.entryList({"*." + kSuffix}, QDir::Files))
            QVERIFY(bin.remove(library));
        QVERIFY(QDir().mkpath(Brush()) && QDir().mkpath(General()));
        QVERIFY(QDir().mkpath(Root() + "/Resources"));
        WriteIni("[General]\nbrush=../%1/brush\ngeneral=../%1/general\n");
        TakeFixtureCalls();
        m_log.Clear();
    }

    void cleanup()
    {
        // Unloading by name forgets the records, so the next test starts with none.
        OVApplication::UnloadPlugins();
        OVApplication::UnloadPlugins(m_tried);
        m_tried.clear();
        QVERIFY(OVApplication::GetErrorPlugins().empty());
        QCOMPARE(OVApplication::GetBrushFactory(), nullptr);
    }

    void cleanupTestCase()
    {
        OVApplication::UnloadPlugins();
        OVImageFileManager::ReleaseInstance();
    }

    void loadsFoldersInOrder()
    {
        const QString brush = Install("brushcontainer", Brush());
        const QString upper = Install("toolcontainer", General(), "UPPER.SO");
        const QString image = Install("imagecontainer", General(), "a_image");
        const QString empty = Install("emptycontainer", General(), "b_empty");
        const QString other = Install("notcontainer", General(), "c_other");
        const QString plain = Install("plainlibrary", General(), "d_plain");
        QVERIFY(OVTest::WriteFile(General() + "/readme.txt", {}));
        QVERIFY(QDir().mkpath(General() + "/x." + kSuffix));
        const QString plainError = LoaderError(plain);

        // Events are processed between files: a call queued when a file starts runs before its
        // result is announced.
        QObject context;
        QObject::connect(OVApplication::GetInstance(), &OVApplication::PluginLoading, &context, [this] {
            QMetaObject::invokeMethod(
                &m_log, [this] { m_log.Append("event"); }, Qt::QueuedConnection);
        });
        OVTest::LogCapture capture;

        OVApplication::LoadPlugins();

        QStringList expected = Loaded({brush, upper, image}) + Failed(empty, "Empty container.") +
                               Failed(other, "Is not an Orvelin's plugin.") + Failed(plain, plainError);
        for (int i = 5; i >= 0; --i)
            expected.insert(2 * i + 1, "event");
        QCOMPARE(m_log.Take(), expected << "PluginsLoadingFinished()");

        QCOMPARE(OVApplication::GetErrorPlugins(), (std::vector<QString>{empty, other, plain}));
        QCOMPARE(OVApplication::GetErrorInfo(other), "Is not an Orvelin's plugin.");
        QCOMPARE(OVApplication::GetErrorInfo(General() + "/readme.txt"), "Errors not found");
        QCOMPARE(TakeFixtureCalls(),
                 Words("brush:Initialize tool:Initialize image:Initialize empty:Initialize empty:destroyed"));
        // What the libraries brought: the image file plug-in and the brush factory.
        OVImageFileManager* registry = OVImageFileManager::GetInstance();
        QVERIFY(registry->GetPluginForRead("fxa") != nullptr);
        QCOMPARE(OVApplication::GetBrushFactory()->GetBrushNames(), QStringList{"round"});

        const QStringList lines = LoadLines(capture.Messages());
        QCOMPARE(lines.size(), 6);
        const QRegularExpression loadedLine(
            QStringLiteral("^Plugin: \\\\\"(.+)\\\\\" loaded successfully\\. "
                           "Loading time is (\\d+(\\.\\d+)?(e-\\d+)?) sec\\.\"$"));
        QVERIFY2(loadedLine.match(lines[0]).hasMatch(), qPrintable(lines[0]));
        QCOMPARE(loadedLine.match(lines[0]).captured(1), brush);
        QVERIFY2(lines[5].endsWith(QStringLiteral("Error message is \\\"%1\\\".\"").arg(plainError)),
                 qPrintable(lines[5]));
        // The user interface is announced to the loaded containers, last loaded first.
        OVApplication::UIReady();
        QCOMPARE(TakeFixtureCalls(), Words("image:UIReady tool:UIReady brush:UIReady"));
        // Unloading takes everything back, last loaded first, and keeps the records.
        capture.Clear();
        OVApplication::UnloadPlugins();
        QCOMPARE(
            TakeFixtureCalls(),
            Words("image:Release image:destroyed tool:Release tool:destroyed brush:Release brush:destroyed"));
        const QString unloaded = "Plugin: \\\"%1\\\" is unloaded successfully.\"";
        QCOMPARE(LoadLines(capture.Messages()),
                 (QStringList{unloaded.arg(image), unloaded.arg(upper), unloaded.arg(brush)}));
        QCOMPARE(registry->GetPluginForRead("fxa"), nullptr);
        QCOMPARE(OVApplication::GetErrorInfo(brush), "Plugin OK.");
        QCOMPARE(OVApplication::GetErrorPlugins(), (std::vector<QString>{empty, other, plain}));

        OVApplication::UIReady();
        QVERIFY(TakeFixtureCalls().isEmpty());
    }

    void wellKnownFlags_data()
    {
        OVTest::Columns<int, QStringList>({"flags", "loaded"});
        using A = OVApplication;
        QTest::newRow("filters, case-sensitive") << int(A::Filters) << QStringList{"filter"};
        // The base name ends at the first dot.
        QTest::newRow("image io") << int(A::ImageIO) << QStringList{"imageio", "imageio.v2"};
        QTest::newRow("brushes: the whole brush folder")
            << int(A::Brushes) << QStringList{"brushcontainer", "extra"};
        QTest::newRow("three flags") << int(A::Adjustments | A::Brushes | A::Tools)
                                     << Words("brushcontainer extra adjustments basictools generaltools");
    }
    void wellKnownFlags()
    {
        QFETCH(int, flags);
        QFETCH(QStringList, loaded);
        Install("brushcontainer", Brush());
        Install("toolcontainer", Brush(), "extra");
        for (const char* name : {"adjustments", "filter", "Filter", "imageio", "imageio.v2", "basictools",
                                 "generaltools", "other"})
            Install("toolcontainer", General(), QString::fromLatin1(name) + '.' + kSuffix);

        OVApplication::LoadPlugins(OVApplication::PluginsLoadTypes(flags));

        QStringList files;
        for (const QString& name : loaded)
            files << (name == "brushcontainer" || name == "extra" ? Brush() : General()) + '/' + name + '.' +
                         kSuffix;
        QCOMPARE(m_log.Entries(), Loaded(files) << "PluginsLoadingFinished()");
    }

    void missingFolders_data()
    {
        // The text of "plugins.ini" ("" for none), %1 standing for the test's plug-in folder.
        // Which libraries load, in order: "general" the one of the general folder, "bin" the one
        // in the application folder.
        OVTest::Columns<QString, int, QStringList, QStringList, bool>(
            {"ini", "flags", "logged", "loads", "finished"});
        const QString brushMissing = "Brush folder is missing";
        const QString generalMissing = "The plugins folder does not exist";
        const QString ini = "[General]\nbrush=%1\ngeneral=%2\n";
        const QString brush = "../%1/brush", general = "../%1/general";
        const QString nowhere = "../nowhere";
        const QStringList none, generalOnly{"general"};
        QTest::newRow("general folder missing")
            << ini.arg(brush, nowhere) << -1 << QStringList{generalMissing} << none << false;
        QTest::newRow("both missing")
            << ini.arg(nowhere, nowhere) << -1 << QStringList{brushMissing, generalMissing} << none << false;
        QTest::newRow("brush folder missing")
            << ini.arg(nowhere, general) << -1 << QStringList{brushMissing} << generalOnly << true;
        QTest::newRow("brush folder missing, not asked for")
            << ini.arg(nowhere, general) << int(OVApplication::ImageIO) << none << generalOnly << true;
        // QSettings would read the unquoted folder name with a comma as a list.
        QTest::newRow("folder name with a comma") << ini.arg(nowhere + ", v2", general + ", v2") << -1
                                                  << QStringList{brushMissing} << generalOnly << true;
        // Without folder names both folders are the application folder, so its library is
        // gathered twice: as a brush library and as a general one.
        QTest::newRow("no plugins.ini") << "" << -1 << none << Words("bin bin") << true;
    }
    void missingFolders()
    {
        QFETCH(QString, ini);
        QFETCH(int, flags);
        QFETCH(QStringList, loads);
        QFETCH(bool, finished);
        Install("brushcontainer", Brush());
        const QString folder = General() + (ini.contains(", v2") ? ", v2" : QString());
        QVERIFY(QDir().mkpath(folder));
        const QString general = Install("toolcontainer", folder, "imageio");
        const QString bin = Install("toolcontainer", QCoreApplication::applicationDirPath(),
                                    QStringLiteral("inbin-%1").arg(m_round));
        WriteIni(ini);

        OVTest::LogCapture capture;
        if (flags < 0)
            OVApplication::LoadPlugins();
        else
            OVApplication::LoadPlugins(OVApplication::PluginsLoadTypes(flags));
        OVApplication::UnloadPlugins();
        QFile::remove(bin);

        QStringList messages;
        for (const QString& message : capture.Messages())
            messages << message.section(QLatin1String("\". "), 1).chopped(1);
        QTEST(messages.filter("folder"), "logged");
        QStringList files;
        for (const QString& which : loads)
            files << (which == "bin" ? bin : general);
        QCOMPARE(m_log.Entries(),
                 Loaded(files) + (finished ? QStringList{"PluginsLoadingFinished()"} : QStringList()));
    }

    void explicitFiles()
    {
        const QString image = Install("imagecontainer", General(), "image");
        const QString tool = Install("toolcontainer", General(), "tool");
        const QString missing = General() + "/missing." + kSuffix;
        const QString folder = General() + "/folder." + kSuffix;
        const QString corrupt = General() + "/corrupt." + kSuffix;
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(OVTest::WriteFile(corrupt, "This is not a library.\n"));
        m_tried << missing << folder << corrupt;

        OVApplication::LoadPlugins(QStringList{missing, folder, corrupt, image, image});
        OVApplication::LoadPlugin(tool);
        // A plug-in with the brush factory's UID replaces the factory with what it is: none.
        const QString brush = Install("brushcontainer", Brush());
        const QString fake = Install("fakebrush", Brush());
        OVApplication::LoadPlugin(brush);
        QVERIFY(OVApplication::GetBrushFactory());
        OVApplication::LoadPlugin(fake);
        QCOMPARE(OVApplication::GetBrushFactory(), nullptr);
        OVApplication::UnloadPlugins(QStringList{brush, fake});
        QCOMPARE(m_log.Entries().mid(12, 2), Loaded({brush}));

        const QString folderError = OVApplication::GetErrorInfo(folder);
        const QString corruptError = OVApplication::GetErrorInfo(corrupt);
        QVERIFY(!folderError.isEmpty() && folderError != "Plugin OK.");
        QVERIFY(!corruptError.isEmpty() && corruptError != "Plugin OK.");
        QCOMPARE(m_log.Take().mid(0, 12), Failed(missing, "Missing file") + Failed(folder, folderError) +
                                              Failed(corrupt, corruptError) + Loaded({image, image, tool}));
        QCOMPARE(OVApplication::GetErrorPlugins(), (std::vector<QString>{missing, folder, corrupt}));
        // The same library loaded twice is one library: its container is initialised twice.
        QCOMPARE(TakeFixtureCalls().mid(0, 3), Words("image:Initialize image:Initialize tool:Initialize"));
        // Unloading by name releases and forgets every record of the name, each with its own
        // unload and log line.
        OVTest::LogCapture capture;
        OVApplication::UnloadPlugin(image);
        QCOMPARE(TakeFixtureCalls().filter("Release"), Words("image:Release image:Release"));
        QCOMPARE(LoadLines(capture.Messages()).size(), 2);
        QCOMPARE(OVApplication::GetErrorInfo(image), "Errors not found");
        // The registry was not asked; it forgot the plug-in when the library's end destroyed it.
        QCOMPARE(OVImageFileManager::GetInstance()->GetPluginForRead("fxa"), nullptr);

        OVApplication::UnloadPlugins(QStringList{missing, corrupt});
        QCOMPARE(OVApplication::GetErrorPlugins(), std::vector<QString>{folder});
        QCOMPARE(OVApplication::GetErrorInfo(tool), "Plugin OK.");
        QVERIFY(m_log.Entries().isEmpty());
    }

    void pluginFileName()
    {
        const auto real = [](const QString& file) {
            return QStringList{QFileInfo(file).canonicalFilePath()};
        };
        const QString brush = Install("brushcontainer", Brush());
        const QString imageio = Install("toolcontainer", General(), "imageio");
        const QString basic = Install("toolcontainer", General(), "basictools");
        // Reached through a link, a library is named by its real path.
        const QString filter = Install("toolcontainer", Root(), "realfilter");
        QVERIFY(QFile::link(filter, General() + "/filter." + kSuffix));

        using A = OVApplication;
        QCOMPARE(A::PluginFileName(A::Adjustments), QStringList{QString()});
        QCOMPARE(A::PluginFileName(A::Filters), real(filter));
        QCOMPARE(A::PluginFileName(A::ImageIO), real(imageio));
        QCOMPARE(A::PluginFileName(A::Brushes), real(brush));
        QCOMPARE(A::PluginFileName(A::Tools), real(basic) << QString());
        QCOMPARE(A::PluginFileName(A::PluginsLoadType(3)), QStringList());
        QCOMPARE(A::PluginFileName(A::PluginsLoadType(0)), QStringList());
        QFile::remove(filter);
    }

private:
    // The application's folder layout: bin/ holds the test, ../Resources the resource folder
    // with "plugins.ini", ../plugins-<n> the brush and general plug-in folders. Qt keeps a
    // plug-in library mapped after it is unloaded, and loading the same path again finds the
    // old code, so every test function gets plug-in folders of its own.
    QString Root() const { return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/.."); }
    QString Plugins() const { return QStringLiteral("plugins-%1").arg(m_round); }
    QString Brush() const { return Root() + '/' + Plugins() + "/brush"; }
    QString General() const { return Root() + '/' + Plugins() + "/general"; }
    // Writes "plugins.ini" (removes it for ""), %1 standing for the test's plug-in folder.
    void WriteIni(const QString& text)
    {
        const QString ini = Root() + "/Resources/plugins.ini";
        QVERIFY(text.isEmpty()
                    ? QFile::remove(ini)
                    : OVTest::WriteFile(ini, QString(text).replace(QLatin1String("%1"), Plugins()).toUtf8()));
    }
    // Copies a fixture library into folder under name (the fixture's by default; with the platform
    // suffix unless name has a suffix of its own) and remembers it for clean-up.
    QString Install(const QString& fixture, const QString& folder, QString name = QString())
    {
        if (name.isEmpty())
            name = fixture;
        const QString target = folder + '/' + (name.contains('.') ? name : name + '.' + kSuffix);
        QFile::remove(target);
        if (!QFile::copy(kFixtures + '/' + fixture + '.' + kSuffix, target))
            qFatal("Cannot copy the fixture %s", qPrintable(fixture));
        m_tried << target;
        return target;
    }

    OVTest::SignalLog m_log;
    QStringList m_tried;
    int m_round = 0;
};

OV_TEST_MAIN(TestPluginLoader)

#include "tst_pluginloader.moc"
