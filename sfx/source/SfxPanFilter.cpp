#include <sfx/source/SfxPanFilter.h>

#include <algorithm>

#include "SampleKernel.h"

namespace vemo::audio {

namespace {

inline std::int16_t scaled(std::int16_t sample, float gain) {
    const float value = std::max(std::min(static_cast<float>(sample) * gain, 32767.0F), -32768.0F);
    return static_cast<std::int16_t>(truncated(value));
}

SFX_KERNEL void scaleAll(std::int16_t* samples, std::int64_t count, float gain) {
    for (std::int64_t i = 0; i < count; ++i) {
        samples[i] = scaled(samples[i], gain);
    }
}

SFX_KERNEL void scaleStereo(std::int16_t* samples, std::int64_t frames, float left, float right) {
    for (std::int64_t f = 0; f < frames; ++f) {
        samples[2 * f] = scaled(samples[2 * f], left);
        samples[2 * f + 1] = scaled(samples[2 * f + 1], right);
    }
}

void scaleSurround(std::int16_t* samples, std::int64_t frames, unsigned int channels, float first,
                   float others) {
    for (std::int64_t f = 0; f < frames; ++f, samples += channels) {
        samples[0] = scaled(samples[0], first);
        for (unsigned int c = 1; c < channels; ++c) {
            samples[c] = scaled(samples[c], others);
        }
    }
}

} // namespace

SfxPanFilter::SfxPanFilter(std::shared_ptr<sfx::SfxDto> record, QObject* parent)
    : QObject(parent), pan_(record->pan()) {}

void SfxPanFilter::apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) {
    if (frames < 1 || channels == 0) {
        return;
    }
    const float first = 1.0F - pan_;
    if (channels == 1) {
        scaleAll(samples, frames, first);
    } else if (channels == 2) {
        scaleStereo(samples, frames, first, pan_);
    } else {
        // Every channel after the first counts as right, rear and centre too; meant so.
        scaleSurround(samples, frames, channels, first, pan_);
    }
}

} // namespace vemo::audio
