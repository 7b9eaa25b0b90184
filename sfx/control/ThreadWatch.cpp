#include <sfx/control/ThreadWatch.h>

#include <QThreadStorage>
#include <vector>

namespace vemo::audio {

namespace {

// Goes with its thread. Not a thread_local object: mingw's run-time frees the memory of such
// objects before it runs their destructors.
struct Sentinel {
    std::vector<std::shared_ptr<std::atomic<bool>>> flags;

    ~Sentinel() {
        for (const auto& flag : flags)
            flag->store(true, std::memory_order_release);
    }
};

} // namespace

ThreadWatch::ThreadWatch() : ended_(std::make_shared<std::atomic<bool>>(false)) {
    // Never destroyed: threads may end later than this library's static objects.
    static auto& sentinels = *new QThreadStorage<Sentinel>;
    sentinels.localData().flags.push_back(ended_);
}

} // namespace vemo::audio
