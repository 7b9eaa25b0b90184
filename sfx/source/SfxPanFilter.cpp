#include <sfx/source/SfxPanFilter.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "SampleKernel.h"

namespace vemo::audio {

namespace {

inline std::int16_t scaled(std::int16_t sample, float gain) {
    const float value = std::max(std::min(static_cast<float>(sample) * gain, 32767.0F), -32768.0F);
    return static_cast<std::int16_t>(truncated(value));
}

// Holds whole frames of 1, 2, 3, 4, 6 and 8 channels, and whole vectors.
constexpr std::size_t kPattern = 48;

SFX_KERNEL void scaleByPattern(std::int16_t* samples, std::size_t count, const float* gains) {
    std::size_t i = 0;
    for (; i + kPattern <= count; i += kPattern) {
        for (std::size_t j = 0; j < kPattern; ++j) {
            samples[i + j] = scaled(samples[i + j], gains[j]);
        }
    }
    for (; i < count; ++i) {
        samples[i] = scaled(samples[i], gains[i % kPattern]);
    }
}

} // namespace

SfxPanFilter::SfxPanFilter(std::shared_ptr<sfx::SfxDto> record, QObject* parent)
    : QObject(parent), pan_(record->pan()) {}

void SfxPanFilter::apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) {
    if (frames < 1 || channels == 0) {
        return;
    }
    const auto count = static_cast<std::size_t>(frames) * channels;
    // Every channel after the first counts as right, rear and centre too; meant so.
    const auto gain = [this, channels](std::size_t i) {
        return i % channels == 0 ? 1.0F - pan_ : pan_;
    };
    if (kPattern % channels != 0) {
        for (std::size_t i = 0; i < count; ++i) {
            samples[i] = scaled(samples[i], gain(i));
        }
        return;
    }
    std::array<float, kPattern> gains;
    for (std::size_t i = 0; i < kPattern; ++i) {
        gains[i] = gain(i);
    }
    scaleByPattern(samples, count, gains.data());
}

} // namespace vemo::audio
