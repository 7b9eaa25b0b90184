#include "PcmConversion.h"

#include <algorithm>
#include <cstring>

#include "SampleKernel.h"

namespace vemo::audio {

namespace {

constexpr float kFloatScale = 32767.0F;

template <typename Sample, typename Convert>
void loadAll(const char* pcm, std::int16_t* samples, std::size_t count, Convert convert) {
    for (std::size_t i = 0; i < count; ++i) {
        Sample value;
        std::memcpy(&value, pcm + i * sizeof value, sizeof value);
        samples[i] = static_cast<std::int16_t>(convert(value));
    }
}

template <typename Sample, typename Convert>
void storeAll(const std::int16_t* samples, char* pcm, std::size_t count, Convert convert) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto value = static_cast<Sample>(convert(samples[i]));
        std::memcpy(pcm + i * sizeof value, &value, sizeof value);
    }
}

// A NaN turns into silence, by way of truncated().
std::int32_t fromFloat(float value) {
    const float scaled = std::clamp(value * kFloatScale, -32768.0F, 32767.0F);
    return truncated(scaled + (scaled < 0.0F ? -0.5F : 0.5F));
}

} // namespace

void toInt16(const char* pcm, QAudioFormat::SampleFormat format, std::int16_t* samples,
             std::size_t count) noexcept {
    switch (format) {
    case QAudioFormat::UInt8:
        loadAll<std::uint8_t>(pcm, samples, count, [](int v) { return (v - 128) * 256; });
        return;
    case QAudioFormat::Int32:
        loadAll<std::int32_t>(pcm, samples, count, [](std::int64_t v) {
            return std::min<std::int64_t>((v + 0x8000) >> 16, 32767);
        });
        return;
    case QAudioFormat::Float:
        loadAll<float>(pcm, samples, count, fromFloat);
        return;
    default:
        std::memcpy(samples, pcm, count * sizeof *samples);
    }
}

void fromInt16(const std::int16_t* samples, QAudioFormat::SampleFormat format, char* pcm,
               std::size_t count) noexcept {
    switch (format) {
    case QAudioFormat::UInt8:
        storeAll<std::uint8_t>(samples, pcm, count,
                               [](int v) { return std::min((v + 128) >> 8, 127) + 128; });
        return;
    case QAudioFormat::Int32:
        storeAll<std::int32_t>(samples, pcm, count, [](int v) { return v * 65536; });
        return;
    case QAudioFormat::Float:
        storeAll<float>(samples, pcm, count,
                        [](int v) { return static_cast<float>(v) / kFloatScale; });
        return;
    default:
        std::memcpy(pcm, samples, count * sizeof *samples);
    }
}

} // namespace vemo::audio
