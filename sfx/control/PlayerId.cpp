#include <sfx/control/PlayerId.h>

#include <atomic>

namespace vemo::audio {

std::uint64_t NextPlayerId() {
    static std::atomic<std::uint64_t> next = 0;
    return next.fetch_add(1, std::memory_order_relaxed);
}

} // namespace vemo::audio
