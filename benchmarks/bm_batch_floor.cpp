// The floor of the demo's batch: plain QImageReader, the sample brightness adjustment and
// QImageWriter in a pool of worker threads, one task per file from reading to writing, without
// the library or its plug-ins.
//
//   bm_batch_floor <workers> <format> <quality or -1> <brightness> <output folder> <input folder>
//
// The input folder's files are taken with those of its subfolders; each result goes to the same
// subfolder of the output folder.

#include "OVSampleImage.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QImageReader>
#include <QImageWriter>
#include <QThreadPool>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() != 7) {
        std::fputs("usage: bm_batch_floor workers format quality brightness output input\n", stderr);
        return 2;
    }
    const QByteArray format = arguments.at(2).toLatin1();
    const int quality = arguments.at(3).toInt();
    const QDir output(arguments.at(5));
    const QDir input(arguments.at(6));

    // The sample brightness adjustment's table.
    const double offset = arguments.at(4).toInt() * 255.0 / 100.0;
    uchar table[256];
    for (int v = 0; v < 256; ++v)
        table[v] = uchar(qBound(0, qRound(v + offset), 255));

    QThreadPool pool;
    pool.setMaxThreadCount(arguments.at(1).toInt());
    QAtomicInt failures;
    QDirIterator files(input.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QFileInfo relative(input.relativeFilePath(file));
        const QString target =
            output.filePath(relative.path() + QLatin1Char('/') + relative.completeBaseName() +
                            QLatin1Char('.') + QString::fromLatin1(format));
        output.mkpath(relative.path());
        pool.start([&, file, target] {
            QImageReader reader(file);
            reader.setAutoTransform(true);
            const QImage image = OVSampleImage::MapChannels(reader.read(), table);
            QImageWriter writer(target, format);
            if (quality >= 0)
                writer.setQuality(quality);
            // The PNG level of the sample writer, zlib's 7.
            if (format == "png")
                writer.setCompression(78);
            if (image.isNull() || !writer.write(image))
                failures.ref();
        });
    }
    pool.waitForDone();
    return failures.loadRelaxed() == 0 ? 0 : 1;
}
