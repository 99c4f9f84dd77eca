#pragma once

#include <QtCore/qglobal.h>

#if defined(OVPLUGINCORE_LIBRARY)
#define OVPLUGINCORE_EXPORT Q_DECL_EXPORT
#else
#define OVPLUGINCORE_EXPORT Q_DECL_IMPORT
#endif
