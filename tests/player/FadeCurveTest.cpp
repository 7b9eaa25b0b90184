#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include <sfx/player/FadeCurve.h>

using vemo::audio::FadeCurve;

namespace {

// Steps through a curve as a fade does, with a sink that takes every volume as it comes.
std::vector<float> Volumes(double from, float to, unsigned int duration) {
    FadeCurve curve(from, to, duration);
    std::vector<float> volumes;
    double sink = from;
    for (unsigned int i = 0; i < curve.Steps(); ++i) {
        volumes.push_back(curve.Next(sink));
        sink = std::min(1.0, static_cast<double>(volumes.back()));
    }
    return volumes;
}

} // namespace

TEST(FadeCurve, halvesInTenEqualRatios) {
    const auto volumes = Volumes(1.0, 0.5F, 300);
    ASSERT_EQ(volumes.size(), 10U);
    for (std::size_t i = 0; i < volumes.size(); ++i)
        EXPECT_NEAR(volumes[i], std::pow(0.5, static_cast<double>(i + 1) / 10.0), 1e-6);
    EXPECT_FLOAT_EQ(volumes.back(), 0.5F);
}

TEST(FadeCurve, risesFromSilenceOverFourDecades) {
    const auto volumes = Volumes(0.0, 1.0F, 90);
    ASSERT_EQ(volumes.size(), 3U);
    EXPECT_NEAR(volumes[0], 0.0001 * std::pow(10000.0, 1.0 / 3.0), 1e-6);
    EXPECT_NEAR(volumes[1], 0.0001 * std::pow(10000.0, 2.0 / 3.0), 1e-5);
    EXPECT_LE(volumes[2], 1.0F);
    EXPECT_NEAR(volumes[2], 1.0, 1e-5);
}

TEST(FadeCurve, endsAtTheFloorWhenFadingToSilence) {
    const auto volumes = Volumes(1.0, 0.0F, 1000);
    ASSERT_EQ(volumes.size(), 33U);
    EXPECT_NEAR(volumes.back(), FadeCurve::Floor, 1e-8);
    EXPECT_GE(volumes.back(), FadeCurve::Floor);
    EXPECT_TRUE(std::is_sorted(volumes.rbegin(), volumes.rend()));
}

TEST(FadeCurve, hasNoStepUnderThirtyMilliseconds) {
    EXPECT_EQ(FadeCurve(1.0, 0.0F, 29).Steps(), 0U);
    EXPECT_EQ(FadeCurve(1.0, 0.0F, 59).Steps(), 1U);
}

TEST(FadeCurve, staysLevelWhenThereIsNothingToFade) {
    for (const float volume : Volumes(0.25, 0.25F, 120))
        EXPECT_FLOAT_EQ(volume, 0.25F);
}

// A sink never reports more than 1.0, so above it the curve climbs on its own count.
TEST(FadeCurve, reachesATargetBeyondTheSinksTop) {
    EXPECT_FLOAT_EQ(Volumes(1.0, 2.0F, 150).back(), 2.0F);
}

TEST(FadeCurve, countsProgressInWholePercentEvenForTheLongestFade) {
    const FadeCurve three(1.0, 0.5F, 90);
    EXPECT_EQ(three.Progress(0), 33);
    EXPECT_EQ(three.Progress(1), 66);
    EXPECT_EQ(three.Progress(2), 100);
    const FadeCurve longest(1.0, 0.5F, 0xFFFFFFFFU);
    EXPECT_EQ(longest.Progress(longest.Steps() / 2), 50);
    EXPECT_EQ(longest.Progress(longest.Steps() - 1), 100);
}
