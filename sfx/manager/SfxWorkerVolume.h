#pragma once

#include <cstdint>
#include <memory>
#include <mutex>

#include <sfx/manager/SfxWorker.h>
#include <sfx/player/SfxPlayerInterface.h>

namespace vemo::audio {

/// A ramp of a player's volume in steps of 20 ms, with playback started before a fade-in and
/// stopped after a fade-out. Every call into the player is made under the gate, which is also held
/// while a step lasts: a command on the player waits for the step to end. Meant so.
///
/// A worker that waits for its gate keeps looking at its stop request, so who holds the gate may
/// join it.
class SfxWorkerVolume : public SfxWorker {
public:
    enum Kind : std::uint32_t { FadeOut = 0, FadeIn = 1 };

    /// `duration` in milliseconds. `player` and `gate` outlive the worker. `restoreLevel` is the
    /// volume that a fade-out leaves behind, once it has stopped the player.
    SfxWorkerVolume(Kind kind, std::uint32_t duration, float startLevel, float targetLevel,
                    const std::unique_ptr<SfxPlayerInterface>* player, float restoreLevel,
                    std::recursive_timed_mutex* gate);
    ~SfxWorkerVolume() override;

private:
    using Gate = std::unique_lock<std::recursive_timed_mutex>;

    void Work() override;
    /// The gate, taken; not owned when a stop was requested while somebody else had it.
    Gate TakeGate() const;
    /// The gate, taken; not owned when a stop was requested.
    Gate TakeGateUnlessStopped();

    std::int32_t stepInterval_ = 20; // milliseconds
    float startLevel_;
    float targetLevel_;
    float restoreLevel_;
    std::uint32_t duration_;
    const std::unique_ptr<SfxPlayerInterface>* player_;
    Kind kind_;
    std::recursive_timed_mutex* gate_;
};

} // namespace vemo::audio
