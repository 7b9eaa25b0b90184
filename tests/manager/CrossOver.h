#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

#include "support/Analysis.h"

namespace sfx_test {

inline constexpr double kLow = 440;
inline constexpr double kHigh = 1320;
inline constexpr double kWindow = 25; // ms
// The tone of an effect at full volume.
inline constexpr double kFull = 0.5;

/// Level of a tone in each window of what is heard of the whole recording.
inline std::vector<double> Levels(const Pcm& heard, double frequency) {
    std::vector<double> levels;
    const auto sound = Heard(heard, 0);
    const std::size_t step = FramesOf(kWindow, heard.rate);
    for (std::size_t at = sound ? sound->begin : 0; sound && at + step <= sound->end; at += step) {
        levels.push_back(ToneLevel(heard, 0, {at, at + step}, frequency));
    }
    return levels;
}

/// How many windows it takes from the first to one of at least `share` of the loudest.
inline std::ptrdiff_t Rise(const std::vector<double>& levels, double share) {
    const double loud = share * *std::max_element(levels.begin(), levels.end());
    return std::find_if(levels.begin(), levels.end(), [=](double it) { return it >= loud; }) -
           levels.begin();
}

/// True if there is a window in which both have `share` of the full level.
inline bool BothSound(const std::vector<double>& a, const std::vector<double>& b, double share) {
    bool both = false;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        both = both || std::min(a[i], b[i]) > share * kFull;
    }
    return both;
}

/// A fades into B: at first A alone, at last B alone, both for a while, and never a gap.
inline void ExpectCrossOver(const std::vector<double>& a, const std::vector<double>& b) {
    EXPECT_TRUE(BothSound(a, b, 0.1));
    const auto firstB = Rise(b, 0.5);
    const auto lastA = std::ptrdiff_t(a.size()) - Rise({a.rbegin(), a.rend()}, 0.5);
    EXPECT_NEAR(*std::max_element(a.begin(), a.end()), kFull, 0.05);
    EXPECT_NEAR(*std::max_element(b.begin(), b.end()), kFull, 0.05);
    EXPECT_LT(Rise(a, 0.5), firstB);
    EXPECT_LT(lastA, std::ptrdiff_t(a.size()) - Rise({b.rbegin(), b.rend()}, 0.5));
    // A loaded machine may drop a window; a bed that ends before the next begins leaves dozens.
    int gaps = 0;
    for (auto i = std::min(lastA, firstB); i < std::max(lastA, firstB); ++i) {
        gaps += std::max(a[i], b[i]) < 0.03 * kFull ? 1 : 0;
    }
    EXPECT_LE(gaps, 4);
}

} // namespace sfx_test
