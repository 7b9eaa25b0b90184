#include "System.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fnmatch.h>

namespace vemo::tool {

std::vector<std::string> commandLine(int argc, char** argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

// They are that way.
void prepareStreams() {}

void restoreStreams() {
    std::fflush(nullptr);
}

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
