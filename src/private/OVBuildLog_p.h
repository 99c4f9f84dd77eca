#pragma once

#include "private/OVAutotestExport_p.h"
#include <QString>

// Every diagnostic of the library is one debug line of the form
//     Build date=<date>, time=<time>. Line=<line>, file="<file>". <message>
// naming the build and the place in the sources that wrote it. The file is the source's path
// within the project, with backslashes, so the line reads the same on every platform.
namespace OVBuildLog {

OVCORE_AUTOTEST_EXPORT QString Format(const char* date, const char* time, int line, const QString& file,
                                      const QString& message);
OVCORE_AUTOTEST_EXPORT void Write(const char* date, const char* time, int line, const QString& file,
                                  const QString& message);

// The project-relative path of a source file given by __FILE__.
OVCORE_AUTOTEST_EXPORT QString SourcePath(const char* file);

} // namespace OVBuildLog

// A diagnostic from the place where the macro stands. The line names the source file that
// holds the code, so the application object's private helpers (plug-in loading, languages,
// look), which have files of their own, name those files.
#define OV_BUILD_LOG(message)                                                                                \
    OVBuildLog::Write(__DATE__, __TIME__, __LINE__, OVBuildLog::SourcePath(__FILE__), message)

// A diagnostic whose line and file are fixed values that tools and people search for,
// independent of where the statement moves to in the source.
#define OV_BUILD_LOG_AT(line, file, message) OVBuildLog::Write(__DATE__, __TIME__, line, file, message)
