#pragma once

#include <memory>
#include <mutex>

#include <sfx/export.h>
#include <sfx/manager/SfxWorkerVolume.h>
#include <sfx/model/SfxType.h>
#include <sfx/player/SfxPlayerInterface.h>

namespace vemo::audio {

/// One player of a SfxManager, with the worker that fades it. Commands for one player are issued
/// from one thread at a time; the gates keep them and the worker's steps apart.
class ManagedSfxPlayer {
public:
    explicit ManagedSfxPlayer(std::unique_ptr<SfxPlayerInterface> player);
    ManagedSfxPlayer(const ManagedSfxPlayer&) = delete;
    ManagedSfxPlayer& operator=(const ManagedSfxPlayer&) = delete;
    /// Cancels a fade that is running; the player may play on. The only member that the library
    /// exports. Meant so.
    SFX_EXPORT ~ManagedSfxPlayer();

    SfxPlayerInterface& Player() const { return *player_; }
    /// The type of the player's record, the last known one if the controller has removed the
    /// player.
    SfxType Type();

    /// Plays, with a fade-in of that many milliseconds on a worker.
    void Play(int fadeMs);
    /// Stops, with a fade-out of that many milliseconds on a worker; 0 stops here and now.
    void Stop(int fadeMs);
    /// A cancelled fade leaves the player at the level it has reached.
    void CancelWorker();
    /// Waits for the worker, then for the player.
    void WaitUntilDone();

private:
    using Gate = std::unique_lock<std::recursive_timed_mutex>;

    /// A player that the controller has removed counts as done; what of it still sounds is stopped.
    bool DoneOrGone_();
    void StartWorker_(SfxWorkerVolume::Kind kind, int fadeMs, float targetLevel);

    std::recursive_timed_mutex commandGate_;
    std::recursive_timed_mutex volumeGate_;
    std::unique_ptr<SfxPlayerInterface> player_;
    float volume_ = 1.0F;
    [[maybe_unused]] float secondLevel_ = 1.0F; // read by no operation
    std::unique_ptr<SfxWorker> worker_;
    bool phase_ = false; // read by no operation
    SfxType lastType_ = PRIMARY;
};

} // namespace vemo::audio
