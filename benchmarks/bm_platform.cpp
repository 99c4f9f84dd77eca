// Start-up cost of the telemetry configuration lookups and the device identifier, side by side
// with what they are measured against: a bare QApplication constructed and destroyed on the
// offscreen platform. Start-up makes six lookups and two identifiers ("StartupShare").

#include "private/OVCoreConfig_p.h"
#include "private/OVSystemInfo_p.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

void QApplicationConstruction(benchmark::State& state)
{
    for (auto _ : state) {
        int argc = 1;
        char name[] = "bm_platform";
        char* argv[] = {name, nullptr};
        QApplication app(argc, argv);
        benchmark::DoNotOptimize(&app);
    }
}

void ReadCoreConfigValueOnce(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadCoreConfigValue(QStringLiteral("node1/A3")));
}

void MakeDeviceIdOnce(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeDeviceId());
}

void StartupShare(benchmark::State& state)
{
    const char* paths[] = {"node1/A0", "node1/A2", "node1/A5", "node1/A4", "node1/A3", "node1/A0"};
    for (auto _ : state) {
        for (const char* path : paths)
            benchmark::DoNotOptimize(ReadCoreConfigValue(QString::fromLatin1(path)));
        benchmark::DoNotOptimize(MakeDeviceId());
        benchmark::DoNotOptimize(MakeDeviceId());
    }
}

} // namespace

BENCHMARK(QApplicationConstruction)->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadCoreConfigValueOnce)->Unit(benchmark::kMicrosecond);
BENCHMARK(MakeDeviceIdOnce)->Unit(benchmark::kMicrosecond);
BENCHMARK(StartupShare)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
