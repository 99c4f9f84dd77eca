#include "KXExportResolutions.h"

#include "private/KXExportResolutions_p.h"

KX_DEFINE_EXPORT_LIST(KXExportResolutions, QSize, const QSize&)
