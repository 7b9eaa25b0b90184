#pragma once

#include <cstdint>

#include <sfx/export.h>

namespace vemo::audio {

/// Changes interleaved signed 16-bit PCM in place. The order of the virtual operations is part of
/// the interface.
class SFX_EXPORT SfxAudioFilterInterface {
public:
    /// Differences below this are inaudible: no filter is built for them.
    static constexpr float EPSILON = 0.001F;

    virtual ~SfxAudioFilterInterface() = default;
    /// Filters `frames` frames of `channels` interleaved samples. Called on the sink's thread;
    /// takes no lock and allocates at most on the first call and when the channel count changes.
    virtual void apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) = 0;
};

} // namespace vemo::audio
