// The demo's headless batch on real photos (Debian mate-backgrounds: 30 JPEG and PNG files,
// 100 megapixels), brightened by 10 and written as PNG or as JPEG at quality 90, side by side in
// one run with:
// - the same batch on one worker, and on the photos three times over (90 files);
// - the floor, bm_batch_floor: plain QImageReader, the same adjustment and QImageWriter in the
//   same number of threads, without the library;
// - ImageMagick (convert -evaluate add 10.2%) and libvips (vips linear 1 26), the same number
//   of processes at a time through xargs -P. Both add the same 26 levels to every colour as the
//   demo's brightness 10, so that the sizes of the results compare like with like (libvips adds
//   them to alpha too).
// Each run is one process under /usr/bin/time -v: the wall time, its peak resident size (of the
// largest process, for the tools run N at a time) and the size of what it wrote. The runs are
// interleaved at random (--benchmark_enable_random_interleaving), so that a busy spell of the
// machine does not fall on one contender only.

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

const QString kPhotos = QStringLiteral("/usr/share/backgrounds/mate");
const QString kWork = QStringLiteral(OV_BENCHMARK_DIR "/batch");

// <work>/photos-30/<category>/<file> and <work>/photos-90/<copy>/<category>/<file>: links to
// the photos, so that every result has a name of its own.
QStringList s_photos;

bool MakeTrees()
{
    QDirIterator files(kPhotos, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        s_photos << files.next();
    s_photos.sort();
    QDir(kWork).removeRecursively();
    for (const QString& photo : s_photos) {
        const QString relative = QDir(kPhotos).relativeFilePath(photo);
        QStringList links{kWork + QStringLiteral("/photos-30/") + relative};
        for (int copy = 1; copy <= 3; ++copy)
            links << kWork + QStringLiteral("/photos-90/%1/").arg(copy) + relative;
        for (const QString& link : links) {
            if (!QDir().mkpath(QFileInfo(link).path()) || !QFile::link(photo, link))
                return false;
        }
    }
    return s_photos.size() == 30;
}

struct Contender
{
    QString program;
    QStringList arguments; // "%in" and "%out" stand for the input and output folders
    int files;             // 30 or 90
};

qint64 FolderBytes(const QString& folder)
{
    qint64 bytes = 0;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        bytes += files.fileInfo().size();
    }
    return bytes;
}

void Batch(benchmark::State& state, const Contender& contender)
{
    const QString input = kWork + QStringLiteral("/photos-%1").arg(contender.files);
    const QString output = kWork + QStringLiteral("/out");
    QStringList arguments{QStringLiteral("-v"), contender.program};
    for (const QString& argument : contender.arguments)
        arguments
            << QString(argument).replace(QLatin1String("%in"), input).replace(QLatin1String("%out"), output);
    double peakKiB = 0;
    qint64 bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        QDir(output).removeRecursively();
        QDir().mkpath(output);
        state.ResumeTiming();
        QProcess process;
        process.start(QStringLiteral("/usr/bin/time"), arguments);
        if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
            process.exitCode() != 0) {
            state.SkipWithError(
                qPrintable(QString::fromLocal8Bit(process.readAllStandardError().right(2000))));
            break;
        }
        state.PauseTiming();
        const QString report = QString::fromLocal8Bit(process.readAllStandardError());
        peakKiB = QRegularExpression(QStringLiteral("Maximum resident set size \\(kbytes\\): (\\d+)"))
                      .match(report)
                      .captured(1)
                      .toDouble();
        bytes = FolderBytes(output);
        state.ResumeTiming();
    }
    state.counters["files"] = contender.files;
    state.counters["peak_rss_MiB"] = peakKiB / 1024;
    state.counters["out_MB"] = bytes / 1e6;
}

// What runs the tools a given number at a time: each file of the input tree through sh -c,
// the result named after the file, in the output folder.
Contender Tool(const QString& command, int jobs)
{
    return {QStringLiteral("sh"),
            {QStringLiteral("-c"), QStringLiteral("find -L %in -type f -print0 | xargs -0 -P %1 -n 1 sh -c "
                                                  "'f=\"$0\"; b=\"${f##*/}\"; b=\"${b%.*}\"; exec %2'")
                                       .arg(jobs)
                                       .arg(command)},
            30};
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // Defaults that flags on the command line, read after them, override.
    std::vector<char*> arguments(argv, argv + argc);
    char interleave[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=3";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    arguments.insert(arguments.begin() + 1, {interleave, repetitions, aggregates});
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (!MakeTrees()) {
        std::fputs(
            "bm_batch needs the 30 photos of Debian's mate-backgrounds in /usr/share/backgrounds/mate\n",
            stderr);
        return 1;
    }
    // A profile of its own for the demo.
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("APPDATA", QFile::encodeName(home.path()));

    const int ideal = QThread::idealThreadCount();
    const QString demo = QStringLiteral(OV_DEMO_EXECUTABLE);
    const QString floor = QStringLiteral(OV_FLOOR_EXECUTABLE);
    const QStringList batch{"--headless", "--recursive", "--adjust", "brightness=10",
                            "--output",   "%out",        "%in"};
    const QString magick = QStringLiteral("convert-im6.q16 \"$f\" -evaluate add 10.2%");
    const QString vips = QStringLiteral("vips linear \"$f\" \"%out/$b.%1\" 1 26 --uchar");
    const std::vector<std::pair<const char*, Contender>> contenders = {
        {"png/demo_ideal/30", {demo, batch, 30}},
        {"png/demo_one/30", {demo, QStringList{"--jobs", "1"} + batch, 30}},
        {"png/demo_ideal/90", {demo, batch, 90}},
        {"png/floor_ideal/30", {floor, {QString::number(ideal), "png", "-1", "10", "%out", "%in"}, 30}},
        {"png/imagemagick_ideal/30", Tool(magick + QStringLiteral(" \"%out/$b.png\""), ideal)},
        {"png/vips_ideal/30", Tool(vips.arg(QStringLiteral("png")), ideal)},
        {"jpg/demo_ideal/30", {demo, QStringList{"--format", "jpg", "--quality", "90"} + batch, 30}},
        {"jpg/floor_ideal/30", {floor, {QString::number(ideal), "jpg", "90", "10", "%out", "%in"}, 30}},
        {"jpg/imagemagick_ideal/30", Tool(magick + QStringLiteral(" -quality 90 \"%out/$b.jpg\""), ideal)},
        {"jpg/vips_ideal/30", Tool(vips.arg(QStringLiteral("jpg[Q=90]")), ideal)},
    };
    for (const auto& [name, contender] : contenders) {
        benchmark::RegisterBenchmark(name, &Batch, contender)
            ->Iterations(1)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    QDir(kWork).removeRecursively();
    return 0;
}
