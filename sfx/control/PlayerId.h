#pragma once

#include <cstdint>

namespace vemo::audio {

/// The next player id of the process, from 0 on. Records, custom players and proxies share the
/// sequence. Any thread.
std::uint64_t NextPlayerId();

} // namespace vemo::audio
