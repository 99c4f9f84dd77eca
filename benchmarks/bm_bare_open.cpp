// The floor of the demo's cold start: a bare Qt program that reads one image with QImageReader
// and writes it as PNG with QImageWriter. Usage: bm_bare_open <image> <output folder>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3)
        return 2;
    const QString input = QString::fromLocal8Bit(argv[1]);
    const QImage image = QImageReader(input).read();
    if (image.isNull())
        return 1;
    QImageWriter writer(
        QDir(QString::fromLocal8Bit(argv[2])).filePath(QFileInfo(input).completeBaseName() + ".png"));
    return writer.write(image) ? 0 : 1;
}
