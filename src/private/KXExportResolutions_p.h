#pragma once

#include "KXExportResolutions.h"
#include "private/KXExportList_p.h"

#include <QSize>
#include <QStringList>

// How the export resolutions differ from the export sizes (see KXExportList).
struct KXExportResolutionTable
{
    using Face = KXExportResolutions;
    using Item = QSize;

    static QString Group() { return QStringLiteral("Resolutions"); }
    static QString Resource() { return QStringLiteral(":/ExportAndShareResolution.ini"); }
    static QString FileName() { return QStringLiteral("/exportandshareresolution.ini"); }
    static QSize Missing() { return QSize(-1, -1); }
    static constexpr const char* kOutOfRange = "resolution index is out of range";

    static int SortKey(const QSize& item) { return item.width(); }
    static QVariant Store(const QSize& item)
    {
        return QStringLiteral("%1x%2").arg(item.width()).arg(item.height());
    }
    static bool Parse(const QVariant& value, QSize* item)
    {
        *item = ParseResolution(value.toString());
        return item->isValid() && !item->isEmpty();
    }

    // "<width>x<height>", both decimal and within 1 to 10000; anything else is an invalid size.
    static QSize ParseResolution(const QString& text)
    {
        const QStringList parts = text.split(QLatin1Char('x'), Qt::KeepEmptyParts, Qt::CaseSensitive);
        if (parts.size() != 2)
            return QSize();
        bool widthOk = false;
        bool heightOk = false;
        const int width = parts.at(0).toInt(&widthOk, 10);
        const int height = parts.at(1).toInt(&heightOk, 10);
        const auto inRange = [](int side) { return side >= 1 && side <= 10000; };
        if (!widthOk || !heightOk || !inRange(width) || !inRange(height))
            return QSize();
        return QSize(width, height);
    }
};

class KXExportResolutionsPrivate : public KXExportList<KXExportResolutionTable>
{
public:
    using KXExportList::KXExportList;
};
