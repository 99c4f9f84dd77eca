#pragma once

// OVCORE_AUTOTEST_EXPORT marks the private classes and functions that the project's own tests,
// benchmarks and fuzz targets call. A build with any of those programs defines OVCORE_AUTOTEST
// for the library and for them, and the marked names are exported from the library; every other
// build (the one that ships) leaves the macro empty and exports nothing private.
//
// Plain C++ without Qt, so that the platform layer can use it too.

#if defined(OVCORE_AUTOTEST)
#if defined(_WIN32)
#if defined(OVCORE_LIBRARY)
#define OVCORE_AUTOTEST_EXPORT __declspec(dllexport)
#else
#define OVCORE_AUTOTEST_EXPORT __declspec(dllimport)
#endif
#else
#define OVCORE_AUTOTEST_EXPORT __attribute__((visibility("default")))
#endif
#else
#define OVCORE_AUTOTEST_EXPORT
#endif
