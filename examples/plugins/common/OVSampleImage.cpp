#include "OVSampleImage.h"

namespace OVSampleImage {

QImage Editable(const QImage& image)
{
    // Unpremultiplied pixels, so that per-channel tables treat every pixel alike. An image without
    // alpha stays without: a writer then stores no alpha channel it would have to fill.
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
}

QImage MapChannels(const QImage& image, const uchar (&table)[256])
{
    QImage result = Editable(image);
    for (int y = 0; y < result.height(); ++y) {
        QRgb* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const QRgb p = line[x];
            line[x] = qRgba(table[qRed(p)], table[qGreen(p)], table[qBlue(p)], qAlpha(p));
        }
    }
    return result;
}

} // namespace OVSampleImage
