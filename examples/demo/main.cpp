// The demo host editor. It starts the editor's application object, its registries and the
// sample plug-ins in the editor's order, then either shows a small editor window or, with
// --headless, reads the given images and folders through the readers pool, adjusts and writes
// them on worker threads, and prints one line per file. It shuts down in the editor's order in
// both modes.

#include "OVDemoCoreConfig.h"
#include "OVDemoHeadless.h"
#include "OVDemoHost.h"
#include "OVDemoWindow.h"

#include "OVApplication.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTextStream>
#include <QThread>

#include <cstdio>
#include <cstring>
#include <initializer_list>

namespace {

bool HasArgument(int argc, char** argv, std::initializer_list<const char*> names)
{
    for (int i = 1; i < argc; ++i) {
        for (const char* name : names)
            if (std::strcmp(argv[i], name) == 0)
                return true;
    }
    return false;
}

// A whole number of the option's value from minimum up, or an error for the user.
bool Number(const QCommandLineParser& parser, const QCommandLineOption& option, int minimum, int maximum,
            int* value)
{
    if (!parser.isSet(option))
        return true;
    bool ok = false;
    *value = parser.value(option).toInt(&ok);
    if (ok && *value >= minimum && *value <= maximum)
        return true;
    QTextStream(stderr) << OVDemoHost::tr("--%1 takes a whole number from %2 to %3.")
                               .arg(option.names().first())
                               .arg(minimum)
                               .arg(maximum)
                        << '\n';
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    // The headless mode and the help need no display: the platform is chosen before the
    // application object connects to one.
    const bool headless = HasArgument(argc, argv, {"--headless"});
    const bool help = HasArgument(argc, argv, {"--help", "-h", "-?", "--help-all"});
    if (headless)
        OVDemoTuneHeadlessMemory();
    if ((headless || help) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    if (!headless && !help && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        std::fputs("ovdemo: no display for the window; run with --headless, or see --help.\n", stderr);
        return 1;
    }
#endif
    // The library's diagnostics would mix with the lines scripts read; --verbose shows them.
    if ((headless || help) && !HasArgument(argc, argv, {"--verbose"}))
        QLoggingCategory::setFilterRules(QStringLiteral("ovcore.debug=false"));

    // The statistics clients read their configuration while the application object is made.
    OVDemoCoreConfig::Register();
    OVApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ovdemo"));

    QCommandLineParser parser;
    parser.setApplicationDescription(OVDemoHost::tr("The demo host editor of the core library."));
    parser.addHelpOption();
    const QCommandLineOption headlessOption(QStringLiteral("headless"),
                                            OVDemoHost::tr("Process the images without a window."));
    const QCommandLineOption adjustOption(
        QStringLiteral("adjust"),
        OVDemoHost::tr("Apply an adjustment, e.g. brightness=20 or greyscale; an unknown name lists them."),
        QStringLiteral("adjustment"));
    const QCommandLineOption outputOption(QStringLiteral("output"),
                                          OVDemoHost::tr("Write the results into this folder."),
                                          QStringLiteral("folder"));
    const QCommandLineOption formatOption(QStringLiteral("format"), OVDemoHost::tr("Format of the results."),
                                          QStringLiteral("suffix"), QStringLiteral("png"));
    const QCommandLineOption jobsOption(
        QStringLiteral("jobs"),
        OVDemoHost::tr("Headless: files worked on at once (default: %1, the processor's threads).")
            .arg(QThread::idealThreadCount()),
        QStringLiteral("n"));
    const QCommandLineOption recursiveOption(QStringLiteral("recursive"),
                                             OVDemoHost::tr("Headless: take the files of subfolders too."));
    const QCommandLineOption qualityOption(QStringLiteral("quality"),
                                           OVDemoHost::tr("Quality of lossy results, 0 to 100."),
                                           QStringLiteral("q"));
    const QCommandLineOption maxMegapixelsOption(
        QStringLiteral("max-megapixels"),
        OVDemoHost::tr("Refuse images larger than this (default: %1).")
            .arg(OVDemoBatch::kDefaultMaxPixels / 1000000),
        QStringLiteral("megapixels"));
    const QCommandLineOption pluginOption(QStringLiteral("plugin"),
                                          OVDemoHost::tr("Load this plug-in library too (may be repeated)."),
                                          QStringLiteral("file"));
    const QCommandLineOption screenshotOption(
        QStringLiteral("screenshot"),
        OVDemoHost::tr("Save a picture of the window once the images are open."), QStringLiteral("file"));
    const QCommandLineOption quitOption(QStringLiteral("quit"),
                                        OVDemoHost::tr("Quit once the images are open (and adjusted)."));
    const QCommandLineOption verboseOption(
        QStringLiteral("verbose"), OVDemoHost::tr("Show the library's diagnostics in the headless mode."));
    const QCommandLineOption feedbackOption(
        QStringLiteral("feedback"),
        OVDemoHost::tr("Headless: send this feedback to the collector and print the reply."),
        QStringLiteral("text"));
    parser.addOption(feedbackOption);
    parser.addOptions({headlessOption, verboseOption, adjustOption, outputOption, formatOption, jobsOption,
                       recursiveOption, qualityOption, maxMegapixelsOption, pluginOption, screenshotOption,
                       quitOption});
    parser.addPositionalArgument(QStringLiteral("images"),
                                 OVDemoHost::tr("Images to open; headless, also folders of images."),
                                 QStringLiteral("[images...]"));
    parser.process(app);

    OVDemoHeadlessOptions options;
    bool megapixels = true;
    if (parser.isSet(maxMegapixelsOption)) {
        const double value = parser.value(maxMegapixelsOption).toDouble(&megapixels);
        megapixels = megapixels && value > 0 && value < 1e6;
        options.maxPixels = qint64(value * 1e6);
        if (!megapixels)
            QTextStream(stderr) << OVDemoHost::tr("--max-megapixels takes a number above 0.") << '\n';
    }
    if (!megapixels || !Number(parser, jobsOption, 1, 1024, &options.jobs) ||
        !Number(parser, qualityOption, 0, 100, &options.quality))
        return 2;

    OVDemoHost host;
    std::unique_ptr<OVDemoWindow> window;
    if (!headless) {
        window.reset(new OVDemoWindow(host));
        window->ShowSplash();
    }
    QStringList plugins;
    for (const QString& file : parser.values(pluginOption))
        plugins << QFileInfo(file).absoluteFilePath();
    host.Start(plugins);

    QList<OVDemoAdjustment> steps;
    for (const QString& text : parser.values(adjustOption)) {
        OVDemoAdjustment step;
        QString error;
        if (!OVDemoHost::ParseAdjustment(text, &step, &error)) {
            QTextStream(stderr) << error << '\n';
            return 2;
        }
        steps << step;
    }

    int status = 0;
    if (headless) {
        host.UIReady();
        options.inputs = parser.positionalArguments();
        options.recursive = parser.isSet(recursiveOption);
        options.steps = steps;
        options.outputFolder = parser.value(outputOption);
        options.format = parser.value(formatOption).toLower();
        options.feedback = parser.value(feedbackOption);
        status = OVDemoRunHeadless(host, options);
    } else {
        window->Build();
        window->show();
        host.UIReady();
        window->Automate(parser.positionalArguments(), steps, parser.value(screenshotOption),
                         parser.isSet(quitOption));
        status = app.exec();
        window.reset();
    }
    host.Stop();
    return status;
}
