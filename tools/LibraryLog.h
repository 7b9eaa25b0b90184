#pragma once

#include <string>

namespace vemo::tool {

/// Takes over Qt's log: quiet unless asked for, and it remembers what the library says of its
/// players, since a playback that cannot sound ends like any other and is only logged.
void takeOverLog();

/// Shows the log on stderr from now on.
void showLog();

/// The library's last complaint about a playback; empty when there was none. Any thread.
std::string playbackFault();

} // namespace vemo::tool
