#pragma once

#include <string>
#include <system_error>
#include <vector>

#include "ToolError.h"

namespace vemo::tool {

/// The arguments behind the program's name. UTF-8 on Windows, elsewhere the bytes that came.
std::vector<std::string> commandLine(int argc, char** argv);

/// Makes the standard streams carry UTF-8 and, on every system, a lone newline at the end of a
/// line, so that what goes through a pipe is the same everywhere. Main thread, once.
void prepareStreams();
/// Flushes them, and puts the terminal back as it was.
void restoreStreams();

/// Ends the process at once: nothing is destroyed, and nothing written that was not flushed. Any
/// thread, and the handler of a signal.
[[noreturn]] void leave(ExitCode code);

/// What the system says of the error, on one line, in UTF-8.
std::string reasonText(const std::error_code& error);

/// True if the file name fits the pattern of *, ? and [...].
bool fitsGlob(const std::string& pattern, const std::string& fileName);

} // namespace vemo::tool
