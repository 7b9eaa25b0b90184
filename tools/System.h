#pragma once

#include <string>
#include <system_error>
#include <vector>

#include "ToolError.h"

namespace vemo::tool {

/// The arguments behind the program's name. UTF-8 on Windows, elsewhere the bytes that came.
std::vector<std::string> commandLine(int argc, char** argv);

/// Makes the standard streams carry UTF-8 and, on every system, a lone newline at the end of a
/// line, so that what goes through a pipe is the same everywhere. Puts the terminal back as it was
/// when it goes. Main thread, one per process.
class StandardStreams {
public:
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;
};

/// Ends the process at once: nothing is destroyed, and nothing written that was not flushed. Any
/// thread, and the handler of a signal.
[[noreturn]] void leave(ExitCode code);

/// What the system says of the error, on one line, in UTF-8.
std::string reasonText(const std::error_code& error);

/// True if the file name fits the pattern of *, ? and [...].
bool fitsGlob(const std::string& pattern, const std::string& fileName);

} // namespace vemo::tool
