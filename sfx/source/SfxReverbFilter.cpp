#include <sfx/source/SfxReverbFilter.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "SampleKernel.h"

namespace vemo::audio {

namespace {

constexpr std::size_t kDelayFrames = 5512;
constexpr std::size_t kRampFrames = 441;
constexpr float kFullScale = 32767.0F;

// Jumps from 0.5 back to 0 at |x| = 0.5; meant so, full-scale echoes come back as near silence.
float softClip(float x) {
    const float size = std::abs(x);
    return size < 0.5F ? x : (1.0F - std::exp(-2.0F * (size - 0.5F))) * (size / x);
}

// Half of a delayed sample reaches the curved branch at +-32767, where it gives 0, and at -32768.
// So the branch is this one number, and the loop needs no exponential.
const float kLoudestClipped = softClip(-32768.0F / kFullScale * 0.5F);

inline std::int16_t mixed(std::int16_t sample, std::int16_t delayed, float ramp, float mix,
                          float loudestClipped) {
    const float dry = static_cast<float>(sample) / kFullScale;
    const float half = static_cast<float>(delayed) / kFullScale * 0.5F;
    const float curved = half < -0.5F ? loudestClipped : 0.0F;
    const float wet = std::abs(half) < 0.5F ? half : curved;
    // Wraps around beyond 16 bits instead of clipping; meant so, unlike the pan filter.
    return static_cast<std::int16_t>(truncated((wet * ramp * mix + dry) * kFullScale));
}

SFX_KERNEL void addEcho(std::int16_t* __restrict samples, std::int16_t* __restrict delay,
                        std::size_t count, float mix, float loudestClipped) {
    for (std::size_t i = 0; i < count; ++i) {
        delay[i] = samples[i] = mixed(samples[i], delay[i], 1.0F, mix, loudestClipped);
    }
}

SFX_KERNEL void addRampedEcho(std::int16_t* __restrict samples, std::int16_t* __restrict delay,
                              const float* __restrict ramp, std::size_t count, float mix,
                              float loudestClipped) {
    for (std::size_t i = 0; i < count; ++i) {
        delay[i] = samples[i] = mixed(samples[i], delay[i], ramp[i], mix, loudestClipped);
    }
}

} // namespace

SfxReverbFilter::SfxReverbFilter(std::shared_ptr<sfx::SfxDto> record, QObject* parent)
    : QObject(parent), mix_(record->reverb()) {}

void SfxReverbFilter::apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) {
    if (frames < 1 || channels == 0) {
        return;
    }
    fitTo_(channels);

    const auto frameCount = static_cast<std::size_t>(frames);
    const std::size_t headEnd = std::min(kRampFrames, frameCount);
    const std::size_t bodyEnd =
        std::max(headEnd, frameCount - std::min(kRampFrames - 1, frameCount));
    const std::size_t tailFrames = frameCount - bodyEnd;
    mixIn_(samples, 0, headEnd * channels, ramps_.data());
    mixIn_(samples, headEnd * channels, bodyEnd * channels, nullptr);
    mixIn_(samples, bodyEnd * channels, frameCount * channels,
           ramps_.data() + ramps_.size() - tailFrames * channels);
}

void SfxReverbFilter::fitTo_(unsigned int channels) {
    const std::size_t length = kDelayFrames * channels;
    if (delayLine_.size() == length) {
        return;
    }
    delayLine_.resize(length);

    // 0 to 440 and down again to 1: its front is the ramp of a chunk's first frames, its back that
    // of the last ones.
    ramps_.clear();
    ramps_.reserve((2 * kRampFrames - 1) * channels);
    for (std::size_t f = 0; f < 2 * kRampFrames - 1; ++f) {
        const std::size_t step = f < kRampFrames ? f : 2 * kRampFrames - 1 - f;
        ramps_.insert(ramps_.end(), channels, static_cast<float>(step) / 441.0F);
    }
}

// The position in the delay line starts again at 0 with every chunk, so that the delay is the
// length of the chunk before; meant so. Hence the slot of sample i is i modulo the length, and
// runs between two wraps are plain loops over two blocks.
void SfxReverbFilter::mixIn_(std::int16_t* samples, std::size_t begin, std::size_t end,
                             const float* ramp) {
    while (begin < end) {
        const std::size_t slot = begin % delayLine_.size();
        const std::size_t count = std::min(end - begin, delayLine_.size() - slot);
        if (ramp != nullptr) {
            addRampedEcho(samples + begin, delayLine_.data() + slot, ramp, count, mix_,
                          kLoudestClipped);
            ramp += count;
        } else {
            addEcho(samples + begin, delayLine_.data() + slot, count, mix_, kLoudestClipped);
        }
        begin += count;
    }
}

} // namespace vemo::audio
