#pragma once

#include <QImage>

// Pixel helpers shared by the sample adjustments and filters.
namespace OVSampleImage {

// A copy of image whose pixels can be edited as unpremultiplied QRgb (ARGB32, or RGB32 when
// the image has no alpha channel).
QImage Editable(const QImage& image);
// The image with every colour channel passed through table; alpha is kept.
QImage MapChannels(const QImage& image, const uchar (&table)[256]);

} // namespace OVSampleImage
