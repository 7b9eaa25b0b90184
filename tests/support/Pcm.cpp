#include "Pcm.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace sfx_test {

std::vector<std::int16_t> Pcm::AsInt16() const {
    std::vector<std::int16_t> result(samples.size());
    std::transform(samples.begin(), samples.end(), result.begin(), [](float sample) {
        return static_cast<std::int16_t>(
            std::clamp(std::lround(sample * 32768.0F), -32768L, 32767L));
    });
    return result;
}

Pcm& Pcm::operator+=(const Pcm& more) {
    if (more.rate != rate || more.channels != channels) {
        throw std::invalid_argument("cannot join sounds of different rates or channels");
    }
    samples.insert(samples.end(), more.samples.begin(), more.samples.end());
    return *this;
}

std::size_t FramesOf(double ms, int rate) {
    return static_cast<std::size_t>(std::lround(ms * rate / 1000));
}

Pcm MakeTone(const Tone& tone) {
    Pcm pcm = MakeSilence(tone.ms, tone.rate, tone.channels);
    const auto channels = static_cast<std::size_t>(tone.channels);
    for (std::size_t i = 0; i < pcm.samples.size(); ++i) {
        const std::size_t index = i / channels;
        const auto frame = static_cast<double>(index);
        pcm.samples[i] = static_cast<float>(
            tone.level * std::sin(2 * std::numbers::pi * tone.frequency * frame / tone.rate));
    }
    return pcm;
}

Pcm MakeSilence(double ms, int rate, int channels) {
    return {rate, channels,
            std::vector<float>(FramesOf(ms, rate) * static_cast<std::size_t>(channels))};
}

} // namespace sfx_test
