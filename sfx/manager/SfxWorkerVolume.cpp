#include <sfx/manager/SfxWorkerVolume.h>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace vemo::audio {

namespace {

using namespace std::chrono_literals;

/// A mutex is not fair: whoever locks it again at once keeps out a command that waits for it, for
/// several steps. It takes a waiter some 50 us to wake up.
void LetCommandsIn() {
    const auto end = std::chrono::steady_clock::now() + 50us;
    while (std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
}

} // namespace

SfxWorkerVolume::SfxWorkerVolume(Kind kind, std::uint32_t duration, float startLevel,
                                 float targetLevel,
                                 const std::unique_ptr<SfxPlayerInterface>* player,
                                 float restoreLevel, std::recursive_timed_mutex* gate)
    : startLevel_(startLevel),
      targetLevel_(targetLevel),
      restoreLevel_(restoreLevel),
      duration_(duration),
      player_(player),
      kind_(kind),
      gate_(gate) {}

SfxWorkerVolume::~SfxWorkerVolume() {
    End();
}

SfxWorkerVolume::Gate SfxWorkerVolume::TakeGate() const {
    Gate gate(*gate_, std::defer_lock);
    // Not try_lock_for(): ThreadSanitizer does not see what it locks.
    while (!gate.try_lock() && !StopRequested())
        std::this_thread::sleep_for(1ms);
    return gate;
}

SfxWorkerVolume::Gate SfxWorkerVolume::TakeGateUnlessStopped() {
    if (StopRequested())
        return {};
    Gate gate = TakeGate();
    if (StopRequested())
        return {};
    HasBegun();
    return gate;
}

void SfxWorkerVolume::Work() {
    if (StopRequested())
        return;
    SfxPlayerInterface& player = **player_;
    const float steps =
        std::ceil(static_cast<float>(duration_) / static_cast<float>(stepInterval_));
    const float delta = (targetLevel_ - startLevel_) / steps;
    float level = startLevel_;
    if (kind_ == FadeIn) {
        const Gate gate = TakeGateUnlessStopped();
        if (!gate)
            return;
        player.SetVolume(startLevel_);
        player.Play();
    }
    for (int step = 0; static_cast<float>(step) < steps; ++step) {
        const bool last = static_cast<float>(step + 1) >= steps;
        level = std::clamp(last ? targetLevel_ : level + delta, 0.0F, 1.0F);
        Gate gate = TakeGateUnlessStopped();
        if (!gate)
            return;
        player.SetVolume(level);
        std::this_thread::sleep_for(std::chrono::milliseconds(stepInterval_));
        gate.unlock();
        LetCommandsIn();
    }
    if (kind_ == FadeOut) {
        const Gate gate = TakeGate();
        if (!gate)
            return;
        player.Stop();
        player.SetVolume(restoreLevel_);
    }
}

} // namespace vemo::audio
