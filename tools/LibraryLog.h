#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vemo::tool {

/// Takes over Qt's log: quiet unless asked for, and it remembers what the library says of its
/// players, since a playback that cannot sound ends like any other and is only logged.
void takeOverLog();

/// Shows the log on stderr from now on.
void showLog();

/// How many complaints about playbacks the library has made. Any thread.
std::size_t playbackFaults();

/// The complaints after the first `count`, the oldest first; long ago ones are forgotten. Any
/// thread.
std::vector<std::string> playbackFaultsSince(std::size_t count);

} // namespace vemo::tool
