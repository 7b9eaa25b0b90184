#pragma once

#include <condition_variable>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>

namespace vemo::audio {

class Playback;

/// Watches the threads of running playbacks. The audio system may hold such a thread for ever (a
/// sink that vanished while it was being opened, a server that died with a lock held); then the
/// supervisor ends the playback in its place, so that nobody waits for it in vain.
///
/// One thread for the whole process, asleep while nothing plays.
class PlaybackSupervisor {
public:
    static PlaybackSupervisor& Instance();

    /// Until the playback is over. Any thread.
    void Watch(const std::shared_ptr<Playback>& playback);

private:
    struct Watched {
        std::weak_ptr<Playback> playback;
        std::uint64_t beat = 0;
        int silentLooks = 0;
    };

    PlaybackSupervisor();
    void Run();
    std::list<std::shared_ptr<Playback>> Look();

    std::mutex mutex_;
    std::condition_variable more_;
    std::list<Watched> watched_;
};

} // namespace vemo::audio
