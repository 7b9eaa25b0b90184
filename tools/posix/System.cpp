#include "System.h"

#include <algorithm>
#include <cstdlib>
#include <fnmatch.h>

namespace vemo::tool {

std::vector<std::string> commandLine(int argc, char** argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

// There the streams are that way.
StandardStreams::StandardStreams() = default;
StandardStreams::~StandardStreams() = default;

void leave(ExitCode code) {
    std::_Exit(static_cast<int>(code));
}

std::string reasonText(const std::error_code& error) {
    return error.message();
}

bool fitsGlob(const std::string& pattern, const std::string& fileName) {
    return ::fnmatch(pattern.c_str(), fileName.c_str(), 0) == 0;
}

} // namespace vemo::tool
