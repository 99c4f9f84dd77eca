#include "OVDemoHeadless.h"

#include "OVDemoPipeline.h"
#include "OVDemoStatistics.h"

#include "OVEndpointMessanger.h"
#include "OVImageFileManager.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QTextStream>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <csignal>
#include <cstdio>
#ifdef __GLIBC__
#include <malloc.h>
#endif
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

// The first SIGINT or SIGTERM only notes that the batch is to stop; the event loop looks at the
// note. A second one ends the process at once: the results in flight are discarded, their
// QSaveFile never committed.
std::atomic<int> s_stopSignal{0};

extern "C" void OnStopSignal(int signal)
{
    s_stopSignal.store(signal);
    std::signal(signal, SIG_DFL);
}

class StopSignals
{
public:
    StopSignals()
        : m_interrupt(std::signal(SIGINT, &OnStopSignal))
        , m_terminate(std::signal(SIGTERM, &OnStopSignal))
    {}
    ~StopSignals()
    {
        std::signal(SIGINT, m_interrupt);
        std::signal(SIGTERM, m_terminate);
    }
    int Caught() const { return s_stopSignal.load(); }

private:
    void (*m_interrupt)(int);
    void (*m_terminate)(int);
};

// The result of one input: its base name with the output format's suffix, in the output folder
// or, for a file found in a folder's subfolder, in the same subfolder of the output folder;
// made unique within the batch by the input's own suffix, then by a number.
QString OutputPath(const OVDemoHeadlessOptions& options, const QString& subfolder, const QFileInfo& input,
                   QSet<QString>& taken)
{
    const QDir folder(QDir::cleanPath(QDir(options.outputFolder).filePath(subfolder)));
    const QString base = input.completeBaseName();
    QString path = folder.filePath(base + QLatin1Char('.') + options.format);
    for (int n = 1; taken.contains(path); ++n) {
        const QString tail = n == 1 ? QString() : QStringLiteral("-%1").arg(n);
        path = folder.filePath(base + QLatin1Char('-') + input.suffix() + tail + QLatin1Char('.') +
                               options.format);
    }
    taken.insert(path);
    return path;
}

// The files of the inputs, each once: a file as it is named, a folder's files of the readable
// formats in name order (its subfolders' too when recursive), each with its output file.
QList<OVDemoJob> Collect(const OVDemoHeadlessOptions& options, const QStringList& readable)
{
    QList<OVDemoJob> jobs;
    QSet<QString> seen;
    QSet<QString> taken;
    const auto add = [&](const QString& path, const QString& subfolder) {
        const QFileInfo info(path);
        if (seen.contains(info.absoluteFilePath()))
            return;
        seen.insert(info.absoluteFilePath());
        jobs << OVDemoJob{path, options.outputFolder.isEmpty() ? QString()
                                                               : OutputPath(options, subfolder, info, taken)};
    };
    for (const QString& input : options.inputs) {
        if (!QFileInfo(input).isDir()) {
            add(input, QString());
            continue;
        }
        QStringList found;
        QDirIterator files(input, QDir::Files,
                           options.recursive ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
        while (files.hasNext()) {
            const QString file = files.next();
            if (readable.contains(QFileInfo(file).suffix().toLower()))
                found << file;
        }
        found.sort();
        const QDir folder(input);
        for (const QString& file : found)
            add(file, QFileInfo(folder.relativeFilePath(file)).path());
    }
    return jobs;
}

// "[12/30] 2.5 files/s, 31 MP/s, about 7 s left  name.jpg" on one line of a terminal.
class Progress
{
public:
    Progress(int total, bool shown)
        : m_total(total)
        , m_shown(shown)
        , m_err(stderr)
    {
        m_timer.start();
    }

    void Clear()
    {
        if (m_shown)
            m_err << "\r\033[K" << Qt::flush;
    }

    void Show(const OVDemoImage& result)
    {
        ++m_done;
        m_pixels += qint64(result.size.width()) * result.size.height();
        if (!m_shown)
            return;
        const double seconds = qMax(0.001, m_timer.elapsed() / 1000.0);
        m_err << '[' << m_done << '/' << m_total << "] "
              << OVDemoHost::tr("%1 files/s, %2 MP/s, about %3 s left")
                     .arg(m_done / seconds, 0, 'f', 1)
                     .arg(m_pixels / 1e6 / seconds, 0, 'f', 0)
                     .arg(qRound((m_total - m_done) * seconds / m_done))
              << "  " << QFileInfo(result.path).fileName() << Qt::flush;
    }

private:
    const int m_total;
    const bool m_shown;
    QTextStream m_err;
    QElapsedTimer m_timer;
    int m_done = 0;
    qint64 m_pixels = 0;
};

} // namespace

void OVDemoTuneHeadlessMemory()
{
#ifdef __GLIBC__
    // Decoded images are blocks of megabytes, a few alive at a time. They come from one heap that
    // keeps what is freed, so the next image takes the same pages again: a block mapped afresh for
    // every image costs a page fault per 4 KiB, which doubled the batch's time with JPEG. One
    // arena, shared by the workers, keeps the heap at the size of the images in flight; with one
    // heap per thread a block freed on one worker lies idle while another maps a new one, and the
    // peak creeps up with the number of files. Only images above 256 MiB are mapped on their own.
    // Set before the first thread starts: a thread that has allocated keeps the arena it got.
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, 256 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
#endif
}

int OVDemoRunHeadless(OVDemoHost& host, const OVDemoHeadlessOptions& options)
{
    QTextStream out(stdout);
    QTextStream err(stderr);

    out << host.PluginSummary() << '\n';
    for (const QString& failed : host.FailedPlugins())
        out << "  " << OVDemoHost::tr("failed: %1").arg(failed) << '\n';
    out.flush();

    OVImageFileManager* files = OVImageFileManager::GetInstance();
    const QList<OVDemoJob> jobs = Collect(options, files ? files->GetSupportedReadFormats() : QStringList());
    if (!options.outputFolder.isEmpty() && !QDir().mkpath(options.outputFolder)) {
        err << OVDemoHost::tr("Cannot create the output folder %1.").arg(options.outputFolder) << '\n';
        return 1;
    }
    QHash<QString, OVDemoJob> byInput;
    QStringList inputs;
    for (const OVDemoJob& job : jobs) {
        byInput.insert(job.input, job);
        inputs << job.input;
        if (!job.output.isEmpty())
            QDir().mkpath(QFileInfo(job.output).path());
    }

    // Files are offered through the open hook, as a host's own open commands do; the hook runs
    // here, before any worker starts.
    QList<OVDemoJob> offered;
    const QMetaObject::Connection hook = QObject::connect(
        &host, &OVDemoHost::OpenRequested, [&](const QString& path) { offered << byInput.value(path); });
    if (files)
        files->Open(inputs);
    QObject::disconnect(hook);

    OVDemoPipeline::Settings settings;
    settings.steps = options.steps;
    settings.format = options.outputFolder.isEmpty() ? QString() : options.format;
    settings.quality = options.quality;
    settings.maxPixels = options.maxPixels;
    settings.workers = options.jobs > 0 ? options.jobs : QThread::idealThreadCount();
    OVDemoPipeline pipeline(settings);
    Progress progress(offered.size(), IsTerminal(stderr));
    int done = 0;
    int failures = 0;
    QObject::connect(&pipeline, &OVDemoPipeline::Finished, [&](const OVDemoImage& result) {
        ++done;
        if (!result.size.isEmpty()) {
            OVDemoStatistics::Send(OVDemoStatistics::Open, {{QStringLiteral("format"), result.format}});
            for (const OVDemoAdjustment& step : options.steps)
                OVDemoStatistics::Send(OVDemoStatistics::Adjust, {{QStringLiteral("adjustment"), step.uid}});
        }
        if (!result.written.isEmpty())
            OVDemoStatistics::Send(OVDemoStatistics::Export, {{QStringLiteral("format"), options.format}});
        progress.Clear();
        if (result.error.isEmpty()) {
            out << "OK\t" << result.path << '\t' << result.size.width() << 'x' << result.size.height() << '\t'
                << result.format << '\t' << result.readerUID << '\t' << result.ms << " ms";
            if (!result.written.isEmpty())
                out << "\t-> " << result.written;
            out << '\n';
        } else {
            ++failures;
            out << "FAILED\t" << result.path << '\t' << result.error << '\n';
            err << OVDemoHost::tr("%1: %2").arg(result.path, result.error) << '\n';
        }
        out.flush();
        err.flush();
        progress.Show(result);
    });

    const StopSignals stopSignals;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (!stopSignals.Caught())
            return;
        watch.stop();
        pipeline.Stop();
        progress.Clear();
        err << OVDemoHost::tr("Stopping once the files in flight are written; stop again to discard them.")
            << Qt::endl;
    });
    watch.start(100);
    pipeline.Start(offered);
    pipeline.Wait();
    watch.stop();
    progress.Clear();

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

    if (stopSignals.Caught()) {
        const QString stopped = OVDemoHost::tr("Stopped by signal %1: %2 of %3 files not started.")
                                    .arg(stopSignals.Caught())
                                    .arg(offered.size() - done)
                                    .arg(offered.size());
        out << stopped << '\n';
        err << stopped << '\n';
    }
    out << OVDemoHost::tr("%1 of %2 files done, %3 failed")
               .arg(done - failures)
               .arg(offered.size())
               .arg(failures)
        << '\n';
    out.flush();
    if (stopSignals.Caught())
        return 128 + stopSignals.Caught();
    if (failures > 0) {
        err << OVDemoHost::tr("%n file(s) could not be read or written.", nullptr, failures) << '\n';
        return 1;
    }
    return 0;
}
