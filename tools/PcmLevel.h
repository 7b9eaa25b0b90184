#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

namespace vemo::tool {

/// How loud a stretch of signed 16-bit PCM is; 1 is full scale.
struct PcmLevel {
    double peak = 0.0;
    double rms = 0.0;
};

/// Level of one channel of interleaved samples.
inline PcmLevel levelOf(std::span<const std::int16_t> samples, unsigned int channels,
                        unsigned int channel) {
    constexpr double FULL_SCALE = 32768.0;
    PcmLevel level;
    double squares = 0.0;
    std::size_t count = 0;
    for (std::size_t i = channel; i < samples.size(); i += channels) {
        const double sample = samples[i] / FULL_SCALE;
        level.peak = std::max(level.peak, std::abs(sample));
        squares += sample * sample;
        ++count;
    }
    level.rms = count == 0 ? 0.0 : std::sqrt(squares / static_cast<double>(count));
    return level;
}

/// Decibels below full scale, for example "-12.3 dB"; "silent" below -96 dB.
inline std::string decibelText(double amplitude) {
    constexpr double SILENT = 1.6e-5;
    if (amplitude < SILENT) {
        return "silent";
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f dB", 20.0 * std::log10(amplitude));
    return text.data();
}

} // namespace vemo::tool
