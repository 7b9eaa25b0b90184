#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Pcm.h"

namespace sfx_test {

/// Samples below this (-60 dB) count as silence.
inline constexpr double kSilence = 0.001;

/// Frames [begin, end).
struct Stretch {
    std::size_t begin = 0;
    std::size_t end = 0;

    double Ms(int rate) const { return 1000.0 * static_cast<double>(end - begin) / rate; }
};

/// All frames of `pcm`.
Stretch Whole(const Pcm& pcm);

double Peak(const Pcm& pcm, int channel, Stretch stretch);
double Rms(const Pcm& pcm, int channel, Stretch stretch);

/// Sounding stretches of a channel: runs of samples over `threshold` with no more than
/// `minGapMs` of silence inside. More than one means that there is a gap.
std::vector<Stretch> Stretches(const Pcm& pcm, int channel, double minGapMs = 5,
                               double threshold = kSilence);
/// From the first to the last sample over the threshold; nothing if the channel is silent.
std::optional<Stretch> Heard(const Pcm& pcm, int channel, double threshold = kSilence);
/// Length of Heard() in milliseconds, 0 if the channel is silent.
double HeardMs(const Pcm& pcm, int channel, double threshold = kSilence);

/// Frequency in Hz of a single tone, from its upward zero crossings; 0 with fewer than two.
double Frequency(const Pcm& pcm, int channel, Stretch stretch);
/// Amplitude of the part of the sound that has this frequency (Goertzel), other tones aside.
double ToneLevel(const Pcm& pcm, int channel, Stretch stretch, double frequency);
/// RMS of each whole window of `windowMs` of the stretch.
std::vector<double> Envelope(const Pcm& pcm, int channel, Stretch stretch, double windowMs = 10);

} // namespace sfx_test
