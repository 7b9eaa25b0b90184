#include <cmath>

#include <gtest/gtest.h>

#include "support/Analysis.h"

using namespace sfx_test;

TEST(Analysis, heardIsTheLengthOfTheToneBetweenSilences) {
    Pcm pcm = MakeSilence(100);
    pcm += MakeTone({.ms = 20});
    pcm += MakeSilence(30);

    const auto heard = Heard(pcm, 1);
    ASSERT_TRUE(heard);
    // A sine starts and ends with a sample of 0.
    EXPECT_NEAR(static_cast<double>(heard->begin), 4800, 2);
    EXPECT_NEAR(static_cast<double>(heard->end), 4800 + 960, 2);
    EXPECT_FALSE(Heard(MakeSilence(10), 0));
    EXPECT_EQ(HeardMs(MakeSilence(10), 0), 0);
}

TEST(Analysis, stretchesSplitsAtSilenceLongerThanTheGap) {
    Pcm pcm = MakeTone({.ms = 50, .frequency = 100});
    pcm += MakeSilence(8);
    pcm += MakeTone({.ms = 50, .frequency = 100});

    const auto split = Stretches(pcm, 0, 7);
    ASSERT_EQ(split.size(), 2U);
    EXPECT_NEAR(split[0].Ms(pcm.rate), 50, 0.1);
    EXPECT_NEAR(split[1].Ms(pcm.rate), 50, 0.1);
    EXPECT_EQ(Stretches(pcm, 0, 9).size(), 1U);
}

TEST(Analysis, levelsAreThoseOfTheSine) {
    Pcm pcm = MakeTone({.ms = 500, .frequency = 441, .level = 0.8, .rate = 44100});
    for (std::size_t i = 1; i < pcm.samples.size(); i += 2) {
        pcm.samples[i] *= 0.25F;
    }

    EXPECT_NEAR(Peak(pcm, 0, Whole(pcm)), 0.8, 0.001);
    EXPECT_NEAR(Rms(pcm, 0, Whole(pcm)), 0.8 / std::sqrt(2), 0.001);
    EXPECT_NEAR(Peak(pcm, 1, Whole(pcm)), 0.2, 0.001);
    EXPECT_EQ(Rms(pcm, 0, {}), 0);
}

TEST(Analysis, frequencyAndToneLevelTellTonesApart) {
    Pcm pcm = MakeTone({.frequency = 441, .level = 0.5, .rate = 44100});
    EXPECT_NEAR(Frequency(pcm, 0, Whole(pcm)), 441, 0.01);
    EXPECT_EQ(Frequency(MakeSilence(100), 0, {0, 4800}), 0);

    const Pcm other = MakeTone({.frequency = 1000, .level = 0.1, .rate = 44100});
    for (std::size_t i = 0; i < pcm.samples.size(); ++i) {
        pcm.samples[i] += other.samples[i];
    }
    EXPECT_NEAR(ToneLevel(pcm, 0, Whole(pcm), 441), 0.5, 0.01);
    EXPECT_NEAR(ToneLevel(pcm, 0, Whole(pcm), 1000), 0.1, 0.01);
    EXPECT_NEAR(ToneLevel(pcm, 0, Whole(pcm), 700), 0, 0.01);
}

TEST(Analysis, envelopeFollowsAFade) {
    Pcm pcm = MakeTone({.ms = 100, .frequency = 1000, .level = 1});
    for (std::size_t i = 0; i < pcm.samples.size(); ++i) {
        pcm.samples[i] *= static_cast<float>(i) / static_cast<float>(pcm.samples.size());
    }

    const auto levels = Envelope(pcm, 0, Whole(pcm), 10);
    ASSERT_EQ(levels.size(), 10U);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        EXPECT_NEAR(levels[i], (static_cast<double>(i) + 0.5) / 10 / std::sqrt(2), 0.01) << i;
    }
}
