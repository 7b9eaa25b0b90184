#include <sfx/manager/SfxWorker.h>

#include <exception>

namespace vemo::audio {

SfxWorker::~SfxWorker() {
    End();
}

void SfxWorker::Start() {
    const std::lock_guard lock(mutex_);
    if (thread_.joinable())
        std::terminate();
    thread_ = std::thread([this] { Work(); });
}

bool SfxWorker::IsRunning() const {
    const std::lock_guard lock(mutex_);
    return thread_.joinable();
}

void SfxWorker::RequestStop() {
    stopRequested_.exchange(true);
}

bool SfxWorker::StopRequested() const {
    return stopRequested_.load();
}

bool SfxWorker::Begun() const {
    return begun_;
}

void SfxWorker::HasBegun() {
    begun_ = true;
}

void SfxWorker::Join() {
    const std::lock_guard lock(mutex_);
    thread_.join();
}

void SfxWorker::End() {
    RequestStop();
    const std::lock_guard lock(mutex_);
    if (thread_.joinable())
        thread_.join();
}

} // namespace vemo::audio
