#pragma once

#include <QtCore/qglobal.h>

#if defined(OVUTILS_LIBRARY)
#define OVUTILS_EXPORT Q_DECL_EXPORT
#else
#define OVUTILS_EXPORT Q_DECL_IMPORT
#endif
