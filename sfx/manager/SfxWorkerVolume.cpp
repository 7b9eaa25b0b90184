#include <sfx/manager/SfxWorkerVolume.h>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace vemo::audio {

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
    using namespace std::chrono_literals;
    Gate gate(*gate_, std::defer_lock);
    while (!StopRequested() && !gate.try_lock_for(5ms)) {
    }
    if (gate.owns_lock() && StopRequested())
        gate.unlock();
    return gate;
}

void SfxWorkerVolume::Work() {
    const std::chrono::milliseconds interval(stepInterval_);
    SfxPlayerInterface& player = **player_;
    const float steps =
        std::ceil(static_cast<float>(duration_) / static_cast<float>(stepInterval_));
    const float delta = (targetLevel_ - startLevel_) / steps;
    float level = startLevel_;
    if (kind_ == FadeIn) {
        const Gate gate = TakeGate();
        if (!gate)
            return;
        player.SetVolume(startLevel_);
        player.Play();
    }
    for (int step = 0; static_cast<float>(step) < steps; ++step) {
        const bool last = static_cast<float>(step + 1) >= steps;
        level = std::clamp(last ? targetLevel_ : level + delta, 0.0F, 1.0F);
        const Gate gate = TakeGate();
        if (!gate)
            return;
        player.SetVolume(level);
        std::this_thread::sleep_for(interval);
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
