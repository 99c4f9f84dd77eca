// What reading one user value costs: OVApplication::GetUserValue on a "user.ini" as the library
// writes it (a string and a colour), a write followed by a read (the first read of a file
// that changed), and the floor of any such read: a fresh QSettings on the same file.

#include "OVApplication.h"

#include <QApplication>
#include <QColor>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const QString kPathKey = QStringLiteral("Save/PathOpen");

QString UserIni()
{
    return OVApplication::GetUserDataFolder() + QStringLiteral("/user.ini");
}

// A profile of some use: the colours, the theme, the policies, paths and the recent lists.
void WriteProfile()
{
    using A = OVApplication;
    A::SetBackground(QColor(12, 34, 56));
    A::SetForeground(QColor(200, 100, 50, 128));
    A::SetMaskBackground(Qt::darkGray);
    A::SetMaskForeground(Qt::lightGray);
    A::SetApplicationTheme(A::Light);
    A::SetTexturePatternIndex(3);
    A::SetPathOpen(QStringLiteral("/home/user/Pictures/2024 holiday"));
    A::SetPathExport(QStringLiteral("/home/user/Pictures/export"));
    A::SetBatchPathInput(QStringLiteral("/home/user/Pictures/batch in"));
    A::SetColorManagementNotEqualPolicy(A::ColorManagementNotEqualPolicy(2));
    A::SetPNGCompressionVisible(false);
    QByteArray recents(400, '\0');
    for (int i = 0; i < recents.size(); ++i)
        recents[i] = char(i * 37);
    A::SetUserValue(QStringLiteral("RecentFiles"), recents);
    A::SetUserValue(QStringLiteral("FavoriteFiles"), recents.left(120));
    A::SetUserValue(QStringLiteral("RecentLimit"), 12);
}

void BM_GetUserValue(benchmark::State& state)
{
    QString value;
    for (auto _ : state)
        value = OVApplication::GetUserValue(kPathKey).toString();
    benchmark::DoNotOptimize(value);
}

void BM_GetBackground(benchmark::State& state)
{
    QColor colour;
    for (auto _ : state)
        colour = OVApplication::GetBackground();
    benchmark::DoNotOptimize(colour);
}

void BM_SetThenGetUserValue(benchmark::State& state)
{
    int i = 0;
    QString value;
    for (auto _ : state) {
        OVApplication::SetUserValue(QStringLiteral("Bench/Counter"), ++i);
        value = OVApplication::GetUserValue(kPathKey).toString();
    }
    benchmark::DoNotOptimize(value);
}

void BM_FloorQSettings(benchmark::State& state)
{
    const QString path = UserIni();
    QString value;
    for (auto _ : state)
        value = QSettings(path, QSettings::IniFormat).value(kPathKey).toString();
    benchmark::DoNotOptimize(value);
}

} // namespace

BENCHMARK(BM_FloorQSettings)->Repetitions(5);
BENCHMARK(BM_GetUserValue)->Repetitions(5);
BENCHMARK(BM_GetBackground)->Repetitions(5);
BENCHMARK(BM_SetThenGetUserValue)->Repetitions(5);

int main(int argc, char** argv)
{
    // A profile of its own, so that nothing reaches the user's.
    QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("APPDATA", QFile::encodeName(home.path()));
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int appArgc = 1;
    OVApplication app(appArgc, argv);
    WriteProfile();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
