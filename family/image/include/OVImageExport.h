#pragma once

#include <QtCore/qglobal.h>

#if defined(OVIMAGE_LIBRARY)
#define OVIMAGE_EXPORT Q_DECL_EXPORT
#else
#define OVIMAGE_EXPORT Q_DECL_IMPORT
#endif
