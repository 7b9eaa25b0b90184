#include "Analysis.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sfx_test {

Stretch Whole(const Pcm& pcm) {
    return {0, pcm.Frames()};
}

double Peak(const Pcm& pcm, int channel, Stretch stretch) {
    double peak = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        peak = std::max(peak, std::abs(static_cast<double>(pcm.At(i, channel))));
    }
    return peak;
}

double Rms(const Pcm& pcm, int channel, Stretch stretch) {
    if (stretch.end <= stretch.begin) {
        return 0;
    }
    double sum = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        sum += static_cast<double>(pcm.At(i, channel)) * pcm.At(i, channel);
    }
    return std::sqrt(sum / static_cast<double>(stretch.end - stretch.begin));
}

std::vector<Stretch> Stretches(const Pcm& pcm, int channel, double minGapMs, double threshold) {
    const std::size_t minGap = FramesOf(minGapMs, pcm.rate);
    std::vector<Stretch> found;
    for (std::size_t i = 0; i < pcm.Frames(); ++i) {
        if (std::abs(pcm.At(i, channel)) < threshold) {
            continue;
        }
        if (found.empty() || i - found.back().end > minGap) {
            found.push_back({i, i});
        }
        found.back().end = i + 1;
    }
    return found;
}

std::optional<Stretch> Heard(const Pcm& pcm, int channel, double threshold) {
    const auto all = Stretches(pcm, channel, 0, threshold);
    if (all.empty()) {
        return std::nullopt;
    }
    return Stretch{all.front().begin, all.back().end};
}

double HeardMs(const Pcm& pcm, int channel, double threshold) {
    return Heard(pcm, channel, threshold).value_or(Stretch{}).Ms(pcm.rate);
}

double Frequency(const Pcm& pcm, int channel, Stretch stretch) {
    double first = 0;
    double last = 0;
    int crossings = 0;
    for (std::size_t i = stretch.begin + 1; i < stretch.end; ++i) {
        const double before = pcm.At(i - 1, channel);
        const double after = pcm.At(i, channel);
        if (before < 0 && after >= 0) {
            last = static_cast<double>(i) - after / (after - before);
            first = crossings == 0 ? last : first;
            ++crossings;
        }
    }
    return crossings < 2 ? 0 : (crossings - 1) * pcm.rate / (last - first);
}

double ToneLevel(const Pcm& pcm, int channel, Stretch stretch, double frequency) {
    if (stretch.end <= stretch.begin) {
        return 0;
    }
    const double coefficient = 2 * std::cos(2 * std::numbers::pi * frequency / pcm.rate);
    double previous = 0;
    double beforeThat = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        const double now = pcm.At(i, channel) + coefficient * previous - beforeThat;
        beforeThat = previous;
        previous = now;
    }
    const double power =
        previous * previous + beforeThat * beforeThat - coefficient * previous * beforeThat;
    return 2 * std::sqrt(std::max(power, 0.0)) / static_cast<double>(stretch.end - stretch.begin);
}

std::vector<double> Envelope(const Pcm& pcm, int channel, Stretch stretch, double windowMs) {
    const std::size_t window = std::max<std::size_t>(FramesOf(windowMs, pcm.rate), 1);
    std::vector<double> levels;
    for (std::size_t i = stretch.begin; i + window <= stretch.end; i += window) {
        levels.push_back(Rms(pcm, channel, {i, i + window}));
    }
    return levels;
}

} // namespace sfx_test
