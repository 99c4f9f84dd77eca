// The demo host's opening path, side by side in one run:
// - 200 (and 50) generated 4-megapixel JPEG files opened headless through the readers pool
//   (the demo's batch: a reader borrowed per file on worker threads) with idealThreadCount()
//   workers and with one worker, against the floor, plain QImageReader in the same numbers of
//   threads without the library; each with the peak resident size of the run;
// - the cold start: the demo host run headless on one image (start-up, decode, write,
//   shutdown) against a bare Qt program that reads and writes the same image.
// The images are made once into <build>/benchmarks/demo-images and kept.

#include "OVApplication.h"
#include "OVDemoBatch.h"
#include "OVImageFileManager.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QThreadPool>

#include <benchmark/benchmark.h>

namespace {

const QString kImages = QStringLiteral(OV_BENCHMARK_DIR "/demo-images");
constexpr int kMaxFiles = 200;

QStringList s_files;

// 2000 x 2000 pixels of gradients and noise, so that the decoder has real work.
void MakeImages()
{
    QDir().mkpath(kImages);
    for (int i = 0; i < kMaxFiles; ++i) {
        const QString path = kImages + QStringLiteral("/image%1.jpg").arg(i, 3, 10, QLatin1Char('0'));
        s_files << path;
        if (QFile::exists(path))
            continue;
        QImage image(2000, 2000, QImage::Format_RGB32);
        QPainter painter(&image);
        QLinearGradient gradient(0, 0, 2000, 2000);
        gradient.setColorAt(0, QColor::fromHsv((i * 37) % 360, 200, 230));
        gradient.setColorAt(1, QColor::fromHsv((i * 91) % 360, 120, 60));
        painter.fillRect(image.rect(), gradient);
        painter.end();
        quint32 seed = 2463534242u + i;
        for (int y = 0; y < image.height(); y += 3) {
            QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                seed ^= seed << 13;
                seed ^= seed >> 17;
                seed ^= seed << 5;
                line[x] ^= seed & 0x1f1f1f;
            }
        }
        image.save(path, "JPEG", 90);
    }
}

// The peak resident size since the last reset, in MiB; resetting makes each run's figure its own.
void ResetPeakRss()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

double PeakRssMiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0;
}

enum Mode
{
    PoolIdeal = 0,
    PoolOne = 1,
    Floor = 2,
    // The floor on one thread: how far the machine itself lets decoding scale.
    FloorOne = 3
};

void Open(benchmark::State& state)
{
    const Mode mode = Mode(state.range(0));
    const QStringList files = s_files.mid(0, int(state.range(1)));
    const int threads = mode == PoolOne || mode == FloorOne ? 1 : QThread::idealThreadCount();
    int decoded = 0;
    ResetPeakRss();
    for (auto _ : state) {
        decoded = 0;
        if (mode == Floor || mode == FloorOne) {
            QThreadPool pool;
            pool.setMaxThreadCount(threads);
            QAtomicInt count;
            for (const QString& file : files) {
                pool.start([file, &count] {
                    QImageReader reader(file);
                    if (!reader.read().isNull())
                        count.ref();
                });
            }
            pool.waitForDone();
            decoded = count.loadRelaxed();
        } else {
            OVDemoBatch batch(threads);
            QObject::connect(&batch, &OVDemoBatch::Opened, [&decoded](const OVDemoImage& result) {
                decoded += result.image.isNull() ? 0 : 1;
            });
            for (const QString& file : files)
                batch.Add(file);
            batch.WaitForAll();
        }
    }
    if (decoded != files.size())
        state.SkipWithError("not every file was decoded");
    state.counters["threads"] = threads;
    state.counters["files"] = files.size();
    state.counters["peak_rss_MiB"] = PeakRssMiB();
}

// One image, decoded and written by a separate process from its start to its end.
QString s_coldImage;

void ColdStart(benchmark::State& state, const QString& program, const QStringList& arguments)
{
    QTemporaryDir out;
    for (auto _ : state) {
        QProcess process;
        process.start(program, arguments + QStringList{out.path()});
        if (!process.waitForFinished(120000) || process.exitCode() != 0) {
            state.SkipWithError(
                qPrintable(QStringLiteral("%1 failed: %2")
                               .arg(program, QString::fromLocal8Bit(process.readAllStandardError()))));
            break;
        }
    }
}

void ColdStartDemo(benchmark::State& state)
{
    ColdStart(state, QStringLiteral(OV_DEMO_EXECUTABLE), {"--headless", s_coldImage, "--output"});
}

void ColdStartBare(benchmark::State& state)
{
    ColdStart(state, QStringLiteral(OV_BARE_EXECUTABLE), {s_coldImage});
}

} // namespace

// Fifty files first, so that the figure at two hundred shows whether the peak grows with the files.
BENCHMARK(Open)
    ->ArgNames({"mode", "files"})
    ->Args({PoolIdeal, 50})
    ->Args({PoolOne, 50})
    ->Args({Floor, 50})
    ->Args({FloorOne, 50})
    ->Args({PoolIdeal, kMaxFiles})
    ->Args({PoolOne, kMaxFiles})
    ->Args({Floor, kMaxFiles})
    ->Args({FloorOne, kMaxFiles})
    ->Iterations(1)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ColdStartDemo)->Iterations(10)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ColdStartBare)->Iterations(10)->UseRealTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    // A profile of its own for the application object and for the demo processes it starts.
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("APPDATA", QFile::encodeName(home.path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    OVApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    MakeImages();
    s_coldImage = s_files.first();

    OVImageFileManager::InitInstance();
    OVApplication::LoadPlugin(QStringLiteral(OV_IMAGEIO_PLUGIN));
    OVImageFileManager::InitReadersPool();
    benchmark::RunSpecifiedBenchmarks();
    OVImageFileManager::ReleaseReadersPool();
    OVApplication::UnloadPlugins();
    OVImageFileManager::ReleaseInstance();
    return 0;
}
