#include <sfx/player/FadeCurve.h>

#include <algorithm>
#include <cmath>

namespace vemo::audio {

FadeCurve::FadeCurve(double sinkVolume, float target, unsigned int duration)
    : current_(sinkVolume == 0.0 ? Floor : static_cast<float>(sinkVolume)),
      target_(target),
      steps_(duration / StepMilliseconds) {
    if (steps_ == 0)
        return;
    const double end = std::max(Floor, target_);
    ratio_ = std::exp(std::log(end / static_cast<double>(current_)) / steps_);
}

float FadeCurve::Next(double sinkVolume) {
    const auto next = static_cast<float>(ratio_ * static_cast<double>(current_));
    current_ =
        sinkVolume > static_cast<double>(target_) ? std::max(Floor, next) : std::min(target_, next);
    return current_;
}

} // namespace vemo::audio
