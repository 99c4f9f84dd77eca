// Speed of colour profile discovery over a folder of 200 RGB profiles that the build writes,
// per profile, side by side in one run with:
// - the floor: listing the folder as discovery does, then opening each file and reading its
//   128-byte header;
// - the listing alone.
// Every profile is RGB, so discovery keeps, reads in full and checks every one of them.

#include "private/OVCMSManager_p.h"

#include <QDir>
#include <QFile>

#include <benchmark/benchmark.h>

namespace {

// OV_PROFILE_FOLDER in the environment points the benchmark at another folder.
const QString kFolder = qEnvironmentVariable("OV_PROFILE_FOLDER", QStringLiteral(OV_PROFILE_FOLDER));
const QStringList kFilters = {QStringLiteral("*.icc"), QStringLiteral("*.icm")};

QStringList List()
{
    return QDir(kFolder).entryList(kFilters, QDir::Files, QDir::Name);
}

// Time per listed file.
void PerProfile(benchmark::State& state, int profiles)
{
    state.counters["profiles"] = profiles;
    state.counters["per_profile"] = benchmark::Counter(
        profiles, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Discovery(benchmark::State& state)
{
    OVCMSManagerPrivate manager;
    int kept = 0;
    for (auto _ : state)
        kept = manager.Discover(kFolder);
    PerProfile(state, List().size());
    state.counters["kept"] = kept;
}

void FloorHeaders(benchmark::State& state)
{
    int read = 0;
    for (auto _ : state) {
        read = 0;
        for (const QString& name : List()) {
            QFile file(kFolder + QDir::separator() + name);
            char header[128];
            if (file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && file.read(header, 128) == 128)
                ++read;
            benchmark::DoNotOptimize(header);
        }
    }
    PerProfile(state, read);
}

void ListingOnly(benchmark::State& state)
{
    int listed = 0;
    for (auto _ : state)
        listed = List().size();
    PerProfile(state, listed);
}

} // namespace

BENCHMARK(Discovery)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorHeaders)->Unit(benchmark::kMicrosecond);
BENCHMARK(ListingOnly)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
