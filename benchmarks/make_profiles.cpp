// Writes a folder of RGB profiles for the discovery benchmark: make_profiles <folder> <count>.
// Every file is an RGB profile, so that discovery reads and checks every one in full.

#include "OVProfileFixtures.h"

#include <QDir>
#include <QString>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const int count = QString::fromLatin1(argv[2]).toInt();
    if (!QDir().mkpath(folder))
        return 1;
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("profile-%1.icc").arg(i, 3, 10, QLatin1Char('0'));
        const QString kind = i % 2 ? QStringLiteral("wide") : QStringLiteral("sRGB");
        if (!OVTest::WriteFile(folder + QLatin1Char('/') + name, OVTest::MakeProfile(kind, name))) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(name));
            return 1;
        }
    }
    return 0;
}
