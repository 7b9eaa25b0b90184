#include "OutputDevices.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <sfx/manager/DeviceControlQt.h>

#include "System.h"
#include "Terminal.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

// A healthy server answers within some 20 ms.
constexpr std::chrono::seconds ANSWER_TIME{10};

/// Leaves the process when it lives for too long: the client library waits without a limit.
class Deadline {
public:
    Deadline()
        : watch_([this] {
              std::unique_lock lock(mutex_);
              if (!over_.wait_for(lock, ANSWER_TIME, [this] { return met_; })) {
                  complain("the audio server does not answer");
                  leave(ExitCode::NoAudio);
              }
          }) {}
    ~Deadline() {
        {
            const std::lock_guard lock(mutex_);
            met_ = true;
        }
        over_.notify_one();
        watch_.join();
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

private:
    std::mutex mutex_;
    std::condition_variable over_;
    bool met_ = false;
    std::thread watch_;
};

} // namespace

std::vector<audio::AudioDevice> outputDevices() {
    const Deadline deadline;
    auto devices = audio::DeviceControlQt().GetOutputDevices();
    if (devices.empty()) {
        throw ToolError(ExitCode::NoAudio, "no audio output device");
    }
    return devices;
}

} // namespace vemo::tool
