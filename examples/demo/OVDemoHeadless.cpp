#include "OVDemoHeadless.h"

#include "OVDemoBatch.h"
#include "OVDemoStatistics.h"

#include "OVEndpointMessanger.h"
#include "OVImageFileManager.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QSet>
#include <QTextStream>

#include <cstdio>
#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool IsTerminal(FILE* stream)
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) != 0;
#endif
}

// The output file of one input: its base name with the output format's suffix, made unique
// within the batch by the input's own suffix.
QString OutputPath(const OVDemoHeadlessOptions& options, const QString& input, QSet<QString>& taken)
{
    const QFileInfo info(input);
    QString name = info.completeBaseName() + QLatin1Char('.') + options.format;
    if (taken.contains(name))
        name = info.completeBaseName() + QLatin1Char('-') + info.suffix() + QLatin1Char('.') + options.format;
    taken.insert(name);
    return QDir(options.outputFolder).filePath(name);
}

} // namespace

int OVDemoRunHeadless(OVDemoHost& host, const OVDemoHeadlessOptions& options)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    const bool terminal = IsTerminal(stderr);

    out << host.PluginSummary() << '\n';
    for (const QString& failed : host.FailedPlugins())
        out << "  " << OVDemoHost::tr("failed: %1").arg(failed) << '\n';
    out.flush();

    if (!options.outputFolder.isEmpty() && !QDir().mkpath(options.outputFolder)) {
        err << OVDemoHost::tr("Cannot create the output folder %1.").arg(options.outputFolder) << '\n';
        return 1;
    }

    OVDemoBatch batch;
    batch.SetSteps(options.steps);
    QSet<QString> taken;
    int done = 0;
    int failures = 0;
    QObject::connect(&batch, &OVDemoBatch::Opened, &batch, [&](const OVDemoImage& result) {
        ++done;
        QString error = result.error;
        QString written;
        if (error.isEmpty()) {
            OVDemoStatistics::Send(OVDemoStatistics::Open, {{QStringLiteral("format"), result.format}});
            for (const OVDemoAdjustment& step : options.steps)
                OVDemoStatistics::Send(OVDemoStatistics::Adjust, {{QStringLiteral("adjustment"), step.uid}});
        }
        if (error.isEmpty() && !options.outputFolder.isEmpty()) {
            written = OutputPath(options, result.path, taken);
            QString writeError;
            if (!host.Write(result.image, written, &writeError))
                error = OVDemoHost::tr("cannot write %1: %2").arg(written, writeError);
            else
                OVDemoStatistics::Send(OVDemoStatistics::Export,
                                       {{QStringLiteral("format"), options.format}});
        }
        if (terminal)
            err << "\r\033[K";
        if (error.isEmpty()) {
            out << "OK\t" << result.path << '\t' << result.image.width() << 'x' << result.image.height()
                << '\t' << result.format << '\t' << result.readerUID << '\t' << result.ms << " ms";
            if (!written.isEmpty())
                out << "\t-> " << written;
            out << '\n';
        } else {
            ++failures;
            out << "FAILED\t" << result.path << '\t' << error << '\n';
            err << OVDemoHost::tr("%1: %2").arg(result.path, error) << '\n';
        }
        out.flush();
        if (terminal) {
            err << '[' << done << '/' << options.files.size() << "] " << QFileInfo(result.path).fileName();
            err.flush();
        }
    });

    // Files are offered through the open hook, as a host's own open commands do.
    QObject::connect(&host, &OVDemoHost::OpenRequested, &batch, &OVDemoBatch::Add);
    if (OVImageFileManager* files = OVImageFileManager::GetInstance())
        files->Open(options.files);
    batch.WaitForAll();
    if (terminal)
        err << "\r\033[K";
    err.flush();

    if (!options.feedback.isEmpty()) {
        OVEndpointMessanger messenger;
        QEventLoop loop;
        OVDemoStatistics::SendFeedback(messenger, OVDemoStatistics::FeedbackEndpoint(messenger),
                                       options.feedback, &loop, [&out, &loop](const QString& reply) {
                                           out << OVDemoHost::tr("Feedback reply: %1").arg(reply) << '\n';
                                           loop.quit();
                                       });
        loop.exec();
    }

    out << OVDemoHost::tr("%1 of %2 files done, %3 failed")
               .arg(done - failures)
               .arg(options.files.size())
               .arg(failures)
        << '\n';
    if (failures > 0) {
        err << OVDemoHost::tr("%n file(s) could not be read or written.", nullptr, failures) << '\n';
        return 1;
    }
    return 0;
}
