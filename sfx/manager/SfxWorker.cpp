#include <sfx/manager/SfxWorker.h>

#include <exception>
#include <system_error>

#include <QLoggingCategory>

namespace vemo::audio {

namespace {

Q_LOGGING_CATEGORY(lcManager, "sfx.manager")

} // namespace

SfxWorker::~SfxWorker() {
    End();
}

void SfxWorker::Start() {
    const std::lock_guard lock(mutex_);
    if (thread_.joinable())
        std::terminate();
    thread_ = std::thread([this] {
        try {
            Work();
        } catch (const std::exception& fault) {
            // Of a host's own player; nobody is there to catch it.
            qCWarning(lcManager) << "a fade has ended:" << fault.what();
        }
    });
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
    // Asked here, since not every system looks for it.
    if (thread_.get_id() == std::this_thread::get_id())
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
    thread_.join();
}

void SfxWorker::End() {
    RequestStop();
    const std::lock_guard lock(mutex_);
    if (thread_.joinable())
        thread_.join();
}

} // namespace vemo::audio
