#pragma once

#include <atomic>
#include <memory>

namespace vemo::audio {

/// Tells whether the thread that made it has ended, without touching a QThread, which may be gone
/// by then.
class ThreadWatch {
public:
    ThreadWatch();

    /// Any thread.
    bool Ended() const { return ended_->load(std::memory_order_acquire); }

private:
    std::shared_ptr<std::atomic<bool>> ended_;
};

} // namespace vemo::audio
