#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sfx_test {

/// Interleaved samples, full scale at 1.0. What tests play, record and analyse.
struct Pcm {
    int rate = 48000;
    int channels = 2;
    std::vector<float> samples;

    std::size_t Frames() const { return samples.size() / static_cast<std::size_t>(channels); }
    float At(std::size_t frame, int channel) const {
        return samples[frame * static_cast<std::size_t>(channels) +
                       static_cast<std::size_t>(channel)];
    }
    /// The samples as signed 16 bit, rounded and clipped.
    std::vector<std::int16_t> AsInt16() const;
    /// Adds the samples of `more`, which must have the same rate and channels.
    Pcm& operator+=(const Pcm& more);
};

/// A sine that is the same on every channel and starts at phase 0.
struct Tone {
    double ms = 500;
    double frequency = 1000;
    double level = 0.5;
    int rate = 48000;
    int channels = 2;
};

std::size_t FramesOf(double ms, int rate);
Pcm MakeTone(const Tone& tone);
Pcm MakeSilence(double ms, int rate = 48000, int channels = 2);

} // namespace sfx_test
