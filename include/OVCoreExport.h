#pragma once

#include <QtCore/qglobal.h>

#if defined(OVCORE_LIBRARY)
#define OVCORE_EXPORT Q_DECL_EXPORT
#else
#define OVCORE_EXPORT Q_DECL_IMPORT
#endif
