#pragma once

#include <stdexcept>
#include <string>

namespace vemo::tool {

/// Exit codes. Scripts rely on them; --help and README.md list them.
enum class ExitCode : int {
    Ok = 0,
    Refused = 1,
    Usage = 2,
    NoInstall = 3,
    UnknownEffect = 4,
    NoAudio = 5,
    Interrupted = 130,
};

/// Ends a command: one line for stderr and the code to leave with.
class ToolError : public std::runtime_error {
public:
    ToolError(ExitCode code, const std::string& line) : std::runtime_error(line), code_(code) {}

    ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

} // namespace vemo::tool
