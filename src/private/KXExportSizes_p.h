#pragma once

#include "KXExportSizes.h"
#include "private/KXExportList_p.h"

// How the export sizes differ from the export resolutions (see KXExportList).
struct KXExportSizeTable
{
    using Face = KXExportSizes;
    using Item = qint64;

    static QString Group() { return QStringLiteral("Sizes"); }
    static QString Resource() { return QStringLiteral(":/ExportAndShareSize.ini"); }
    static QString FileName() { return QStringLiteral("/exportandsharesize.ini"); }
    static qint64 Missing() { return -1; }
    static constexpr const char* kOutOfRange = "size index is out of range";

    static qint64 SortKey(qint64 item) { return item; }
    static QVariant Store(qint64 item) { return item; }
    static bool Parse(const QVariant& value, qint64* item)
    {
        bool ok = false;
        *item = value.toLongLong(&ok);
        return ok && *item > 0;
    }
};

class KXExportSizesPrivate : public KXExportList<KXExportSizeTable>
{
public:
    using KXExportList::KXExportList;
};
