#pragma once

#include <cstdint>

namespace vemo::audio {

/// The arithmetic of a fade: an exponential way from the sink's volume to a target in steps of
/// 30 ms. A plain value without a clock; whoever runs the fade keeps the time.
class FadeCurve {
public:
    static constexpr unsigned int StepMilliseconds = 30;
    /// Silence as far as a curve that multiplies can know it.
    static constexpr float Floor = 0.0001F;

    /// `sinkVolume` linear, `target` linear, `duration` in milliseconds. Under one step's length
    /// there is no step.
    FadeCurve(double sinkVolume, float target, unsigned int duration);

    unsigned int Steps() const { return steps_; }
    /// Factor from one step to the next.
    double Ratio() const { return ratio_; }
    /// The volume to set in the next step, given what the sink has now. A fade down ends at Floor
    /// or the target, a fade up (or a level one) at the target.
    float Next(double sinkVolume);
    /// Percent done after step `index`, counted from 0.
    int Progress(unsigned int index) const {
        return static_cast<int>(std::uint64_t{100} * (std::uint64_t{index} + 1) / steps_);
    }

private:
    float current_;
    float target_;
    unsigned int steps_;
    double ratio_ = 1.0;
};

} // namespace vemo::audio
