// The demo host editor. It starts the editor's application object, its registries and the
// sample plug-ins in the editor's order, then either shows a small editor window or, with
// --headless, opens the given images through the readers pool, adjusts and writes them, and
// prints one line per file. It shuts down in the editor's order in both modes.

#include "OVDemoCoreConfig.h"
#include "OVDemoHeadless.h"
#include "OVDemoHost.h"
#include "OVDemoWindow.h"

#include "OVApplication.h"

#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QTextStream>

#include <cstring>

namespace {

bool HasArgument(int argc, char** argv, const char* name)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], name) == 0)
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    // The headless mode needs no display.
    const bool headless = HasArgument(argc, argv, "--headless");
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The library's diagnostics would mix with the lines scripts read; --verbose shows them.
    if (headless && !HasArgument(argc, argv, "--verbose"))
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
        QStringLiteral("adjust"), OVDemoHost::tr("Apply an adjustment, e.g. brightness=20 or greyscale."),
        QStringLiteral("adjustment"));
    const QCommandLineOption outputOption(QStringLiteral("output"),
                                          OVDemoHost::tr("Write the results into this folder."),
                                          QStringLiteral("folder"));
    const QCommandLineOption formatOption(QStringLiteral("format"), OVDemoHost::tr("Format of the results."),
                                          QStringLiteral("suffix"), QStringLiteral("png"));
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
    parser.addOptions({headlessOption, verboseOption, adjustOption, outputOption, formatOption,
                       screenshotOption, quitOption});
    parser.addPositionalArgument(QStringLiteral("images"), OVDemoHost::tr("Images to open."),
                                 QStringLiteral("[images...]"));
    parser.process(app);

    OVDemoHost host;
    std::unique_ptr<OVDemoWindow> window;
    if (!headless) {
        window.reset(new OVDemoWindow(host));
        window->ShowSplash();
    }
    host.Start();

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
        OVDemoHeadlessOptions options;
        options.files = parser.positionalArguments();
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
