#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <functional>

class QMenu;
class QWidget;

// The demo's use of the recent and favourite files and of the export lists.
namespace OVDemoLists {

// File > Open Recent (favourites first, starred) and File > Favourite, which stars or unstars
// the current image. open opens a path; current gives the current image's path.
void AddFileEntries(int recentId, int favouriteId, std::function<void(const QString&)> open,
                    std::function<QString()> current);

// What the export dialog asks for: a resolution to fit the image into (invalid: as it is)
// and a largest file size in bytes (0: any).
struct ExportOptions
{
    QSize resolution;
    qint64 maxBytes = 0;
};

// Offers the export resolution and size lists; false when the user cancels.
bool AskExportOptions(QWidget* parent, ExportOptions* options);
// The image scaled down to fit the resolution, keeping its aspect ratio.
QImage Fit(const QImage& image, const QSize& resolution);

} // namespace OVDemoLists
