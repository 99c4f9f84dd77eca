// Writes the seeds of fuzz_cmsprofile into the folder given as the first argument: complete
// profiles of every kind Little CMS makes for the tests, byte for byte as a file holds them.

#include "../tests/support/OVProfileFixtures.h"

#include <QDir>

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    bool ok = true;
    for (const char* kind : {"sRGB", "wide", "gray", "lab", "cmyk"})
        ok = OVTest::WriteFile(folder.filePath(QLatin1String(kind) + QLatin1String(".icc")),
                               OVTest::MakeProfile(QLatin1String(kind), QLatin1String(kind))) &&
             ok;
    return ok ? 0 : 1;
}
