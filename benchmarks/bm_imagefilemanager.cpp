// Speed of the image file registry, side by side in one run:
// - a readers pool round trip (AcquireReader + ReleaseAcquiredReader) on one thread and on as
//   many threads as the machine has ideal threads, against the floor, the same permit and
//   pop on a bare semaphore, mutex and vector, against the floor with the two map look-ups
//   that the pool's interface needs (format to entry, reader to entry), and against making
//   and giving back a reader per use;
// - registering and then unregistering n plug-ins of 10 formats each, per plug-in, with the
//   growth fitted over n.

#include "OVImageFileFixtures.h"
#include "OVImageFileManager.h"
#include "OVImageFileReader.h"

#include <QMap>
#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

const QString kFormat = QStringLiteral("jpg");

// The pool's work without the registry around it: one permit, then a pop under the mutex,
// and back again.
struct BarePool
{
    explicit BarePool(int n)
        : available(n)
    {
        for (int i = 0; i < n; ++i)
            readers.push_back(new QObject());
    }
    ~BarePool() { qDeleteAll(readers); }

    QSemaphore available;
    QMutex lock;
    std::vector<QObject*> readers;
};

BarePool* s_bare = nullptr;
QMap<QString, BarePool*> s_bareByFormat;
QMap<QObject*, BarePool*> s_bareByReader;

void PoolRoundTrip(benchmark::State& state)
{
    OVImageFileManager* manager = OVImageFileManager::GetInstance();
    for (auto _ : state) {
        OVImageFileReader* reader = manager->AcquireReader(kFormat);
        benchmark::DoNotOptimize(reader);
        manager->ReleaseAcquiredReader(reader);
    }
    state.SetItemsProcessed(state.iterations());
}

template <bool LookUp>
void FloorRoundTrip(benchmark::State& state)
{
    for (auto _ : state) {
        BarePool* pool = LookUp ? s_bareByFormat.value(kFormat.toLower()) : s_bare;
        pool->available.acquire();
        pool->lock.lock();
        QObject* reader = pool->readers.back();
        pool->readers.pop_back();
        pool->lock.unlock();
        benchmark::DoNotOptimize(reader);
        if (LookUp)
            pool = s_bareByReader.value(reader);
        pool->lock.lock();
        pool->readers.push_back(reader);
        pool->lock.unlock();
        pool->available.release();
    }
    state.SetItemsProcessed(state.iterations());
}

// What the pool replaces; creating readers is for the main thread only.
void CreatePerUse(benchmark::State& state)
{
    OVImageFileManager* manager = OVImageFileManager::GetInstance();
    for (auto _ : state) {
        OVImageFileReader* reader = manager->CreateReader(kFormat);
        benchmark::DoNotOptimize(reader);
        manager->ReleaseReader(reader);
    }
    state.SetItemsProcessed(state.iterations());
}

// Plug-ins of 10 formats each, with names spread over the whole sort order, one reader and
// one writer UID.
std::vector<std::unique_ptr<OVTest::FakeImagePlugin>> MakePlugins(int n)
{
    std::vector<std::unique_ptr<OVTest::FakeImagePlugin>> plugins;
    for (int i = 0; i < n; ++i) {
        QString definition = QStringLiteral("P%1 r@R%1 w@W%1").arg(i);
        for (int j = 0; j < 10; ++j) {
            const quint32 key = quint32(i * 10 + j) * 2654435761u; // distinct for distinct keys
            definition += QStringLiteral(" x%1:rw").arg(key, 8, 16, QLatin1Char('0'));
        }
        plugins.push_back(std::make_unique<OVTest::FakeImagePlugin>(definition));
    }
    return plugins;
}

void RegisterUnregister(benchmark::State& state)
{
    const int n = int(state.range(0));
    const auto plugins = MakePlugins(n);
    OVImageFileManager* manager = OVImageFileManager::GetInstance();
    for (auto _ : state) {
        for (const auto& plugin : plugins)
            manager->Register(plugin.get());
        for (const auto& plugin : plugins)
            manager->Unregister(plugin.get());
    }
    state.SetComplexityN(n);
    state.counters["per_plugin"] =
        benchmark::Counter(n, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

} // namespace

int main(int argc, char** argv)
{
    const int ideal = QThread::idealThreadCount();
    OVImageFileManager::InitInstance();
    OVTest::FakeImagePlugin plugin(QStringLiteral("J jpg:r disposes"));
    OVImageFileManager::GetInstance()->Register(&plugin);
    OVImageFileManager::InitReadersPool();
    BarePool bare(ideal);
    s_bare = &bare;
    s_bareByFormat.insert(kFormat, &bare);
    s_bareByFormat.insert(QStringLiteral("jpeg"), &bare);
    for (QObject* reader : bare.readers)
        s_bareByReader.insert(reader, &bare);

    benchmark::AddCustomContext("idealThreadCount", std::to_string(ideal));
    for (int threads : {1, ideal}) {
        benchmark::RegisterBenchmark("PoolRoundTrip", PoolRoundTrip)->Threads(threads)->UseRealTime();
        benchmark::RegisterBenchmark("FloorRoundTrip", FloorRoundTrip<false>)
            ->Threads(threads)
            ->UseRealTime();
        benchmark::RegisterBenchmark("FloorWithLookUps", FloorRoundTrip<true>)
            ->Threads(threads)
            ->UseRealTime();
    }
    benchmark::RegisterBenchmark("CreatePerUse", CreatePerUse);
    benchmark::RegisterBenchmark("RegisterUnregister", RegisterUnregister)
        ->Arg(125)
        ->Arg(250)
        ->Arg(500)
        ->Arg(1000)
        ->Arg(2000)
        ->Arg(4000)
        ->Unit(benchmark::kMillisecond)
        ->Complexity(benchmark::oNLogN);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();

    OVImageFileManager::ReleaseReadersPool();
    OVImageFileManager::GetInstance()->Unregister(&plugin);
    OVImageFileManager::ReleaseInstance();
    return 0;
}
