#include <sfx/player/PlaybackSupervisor.h>

#include <chrono>
#include <thread>

#include <sfx/player/Playback.h>

namespace vemo::audio {

namespace {

// Looks are counted, not clocked: after the machine slept, every beat is late by the clock.
constexpr auto Interval = std::chrono::milliseconds(500);
constexpr int SilentLooksAllowed = 10;

} // namespace

PlaybackSupervisor& PlaybackSupervisor::Instance() {
    // Never destroyed: a thread that hangs may still be watched while the process leaves.
    static PlaybackSupervisor* const instance = new PlaybackSupervisor;
    return *instance;
}

PlaybackSupervisor::PlaybackSupervisor() {
    std::thread([this] { Run(); }).detach();
}

void PlaybackSupervisor::Watch(const std::shared_ptr<Playback>& playback) {
    const std::lock_guard lock(mutex_);
    watched_.push_back({playback, playback->Beat(), 0});
    more_.notify_one();
}

void PlaybackSupervisor::Run() {
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            more_.wait(lock, [this] { return !watched_.empty(); });
        }
        std::this_thread::sleep_for(Interval);
        for (const auto& playback : Look())
            playback->Abandon();
    }
}

std::list<std::shared_ptr<Playback>> PlaybackSupervisor::Look() {
    std::list<std::shared_ptr<Playback>> hanging;
    const std::lock_guard lock(mutex_);
    for (auto watched = watched_.begin(); watched != watched_.end();) {
        const auto playback = watched->playback.lock();
        if (!playback || playback->IsOver()) {
            watched = watched_.erase(watched);
            continue;
        }
        const std::uint64_t beat = playback->Beat();
        watched->silentLooks = beat == watched->beat ? watched->silentLooks + 1 : 0;
        watched->beat = beat;
        if (watched->silentLooks > SilentLooksAllowed) {
            hanging.push_back(playback);
            watched = watched_.erase(watched);
            continue;
        }
        ++watched;
    }
    return hanging;
}

} // namespace vemo::audio
