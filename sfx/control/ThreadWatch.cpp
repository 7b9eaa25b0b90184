#include <sfx/control/ThreadWatch.h>

#include <vector>

namespace vemo::audio {

namespace {

// Goes with its thread.
struct Sentinel {
    std::vector<std::shared_ptr<std::atomic<bool>>> flags;

    ~Sentinel() {
        for (const auto& flag : flags)
            flag->store(true, std::memory_order_release);
    }
};

} // namespace

ThreadWatch::ThreadWatch() : ended_(std::make_shared<std::atomic<bool>>(false)) {
    thread_local Sentinel sentinel;
    sentinel.flags.push_back(ended_);
}

} // namespace vemo::audio
