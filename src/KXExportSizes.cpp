#include "KXExportSizes.h"

#include "private/KXExportSizes_p.h"

KX_DEFINE_EXPORT_LIST(KXExportSizes, qint64, qint64)
