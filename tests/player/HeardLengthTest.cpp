#include <cmath>
#include <ostream>

#include <gtest/gtest.h>

#include "PlayerHouse.h"

using namespace sfx_test;

namespace {

struct Case {
    double ms;
    int repeats;
    int rate;
    int channels;

    // Keeps the addresses of a raw dump out of the names ctest gives the tests.
    friend void PrintTo(const Case& effect, std::ostream* out) {
        *out << effect.ms << " ms, " << effect.repeats << " repeats";
    }
};

class HeardLength : public ::testing::TestWithParam<Case> {};

} // namespace

// Every effect is heard to its last sample and at its level, however short it is.
TEST_P(HeardLength, isTheWholeEffect) {
    const auto [ms, repeats, rate, channels] = GetParam();
    PulseServer::Shared();
    PlayerHouse house;
    // A full number of periods, so that repeats join without a step and nothing ends in silence.
    FakeFile file(
        MakeTone({.ms = ms, .frequency = 1000, .level = 0.5, .rate = rate, .channels = channels}));
    auto& player = house.Add(Record().repeats(repeats).build(), &file);
    SignalLog finished(&player, &vemo::audio::SfxPlayerImpl::sfxFinished);

    Recorder recorder;
    player.Play();
    EXPECT_FALSE(player.Done());
    ASSERT_TRUE(recorder.WaitForSilence());
    ASSERT_TRUE(house.WaitUntilAllDone());
    const Pcm heard = recorder.Stop();

    const double expected = ms * (repeats + 1);
    for (const int channel : {0, 1}) {
        EXPECT_NEAR(HeardMs(heard, channel), expected, 5.0);
        ASSERT_EQ(Stretches(heard, channel).size(), 1U) << "a gap on channel " << channel;
        const Stretch sound = *Heard(heard, channel);
        // Away from the edges, where the server's resampler rings.
        const std::size_t margin = (sound.end - sound.begin) / 5;
        const Stretch middle{sound.begin + margin, sound.end - margin};
        EXPECT_NEAR(Rms(heard, channel, middle), 0.5 / std::sqrt(2.0), 0.02);
        EXPECT_NEAR(Frequency(heard, channel, middle), 1000.0, 15.0);
    }
    EXPECT_EQ(finished.Count(), 1U);
    EXPECT_EQ(std::get<0>(finished.All().front()), "sfx.1");
}

INSTANTIATE_TEST_SUITE_P(Effects, HeardLength,
                         ::testing::Values(Case{10, 0, 44100, 2}, Case{10, 3, 44100, 2},
                                           Case{10, 40, 48000, 1}, Case{50, 0, 44100, 2},
                                           Case{50, 5, 22050, 1}, Case{500, 0, 44100, 2},
                                           Case{500, 1, 48000, 1}, Case{3000, 0, 44100, 2},
                                           Case{3000, 1, 48000, 2}),
                         [](const auto& effect) {
                             return std::to_string(static_cast<int>(effect.param.ms)) + "ms" +
                                    std::to_string(effect.param.repeats) + "repeats" +
                                    std::to_string(effect.param.rate) + "Hz" +
                                    std::to_string(effect.param.channels) + "ch";
                         });
