#pragma once

#include <cstddef>
#include <cstdint>

#include <QAudioFormat>

namespace vemo::audio {

/// Converts `count` samples of any format QAudioFormat knows to signed 16 bits and back; an
/// unknown format counts as 16-bit. `pcm` may be at any address. There and back leaves a sample
/// within half a 16-bit step of where it was; Float beyond +-1 is limited. Any thread, no
/// allocation.
void toInt16(const char* pcm, QAudioFormat::SampleFormat format, std::int16_t* samples,
             std::size_t count) noexcept;
void fromInt16(const std::int16_t* samples, QAudioFormat::SampleFormat format, char* pcm,
               std::size_t count) noexcept;

} // namespace vemo::audio
