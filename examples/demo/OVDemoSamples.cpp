// Makes the sample images the demo opens: a few pictures with gradients and shapes in the
// formats of the sample image I/O plug-in. Usage: ovdemo_samples <folder>

#include <QDir>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <QTextStream>

namespace {

QImage Landscape(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, height);
    sky.setColorAt(0, QColor(38, 84, 160));
    sky.setColorAt(0.6, QColor(250, 190, 120));
    painter.fillRect(image.rect(), sky);
    painter.setBrush(QColor(255, 236, 160));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(width * 0.7, height * 0.45), height * 0.12, height * 0.12);
    QPolygonF hills;
    hills << QPointF(0, height);
    for (int x = 0; x <= width; x += width / 16)
        hills << QPointF(x, height * (0.7 + 0.08 * ((x / (width / 16)) % 3)));
    hills << QPointF(width, height);
    painter.setBrush(QColor(40, 90, 60));
    painter.drawPolygon(hills);
    return image;
}

QImage Bubbles(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 12; ++i) {
        const QPointF centre(width * ((i * 37) % 100) / 100.0, height * ((i * 61) % 100) / 100.0);
        const qreal radius = height * (0.08 + 0.02 * (i % 4));
        QRadialGradient bubble(centre, radius);
        bubble.setColorAt(0, QColor::fromHsv((i * 30) % 360, 160, 255, 230));
        bubble.setColorAt(1, QColor::fromHsv((i * 30) % 360, 255, 140, 60));
        painter.setBrush(bubble);
        painter.drawEllipse(centre, radius, radius);
    }
    return image;
}

QImage Checker(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int y = 0; y < height; y += 32)
        for (int x = 0; x < width; x += 32)
            painter.fillRect(x, y, 32, 32, ((x + y) / 32) % 2 ? QColor(230, 230, 230) : QColor(70, 110, 190));
    return image;
}

} // namespace

int main(int argc, char** argv)
{
    QTextStream err(stderr);
    if (argc != 2) {
        err << "usage: ovdemo_samples <folder>\n";
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral("."))) {
        err << "cannot create " << folder.path() << '\n';
        return 1;
    }
    const struct
    {
        const char* name;
        QImage image;
    } samples[] = {
        {"landscape.jpg", Landscape(800, 533)},
        {"bubbles.png", Bubbles(640, 480)},
        {"checker.bmp", Checker(320, 224)},
        {"landscape-small.png", Landscape(320, 213)},
    };
    for (const auto& sample : samples) {
        if (!sample.image.save(folder.filePath(QLatin1String(sample.name)))) {
            err << "cannot write " << sample.name << '\n';
            return 1;
        }
    }
    return 0;
}
