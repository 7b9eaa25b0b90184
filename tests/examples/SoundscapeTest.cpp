#include <gtest/gtest.h>

#include <manager/CrossOver.h>
#include <support/EffectMaker.h>
#include <support/ProcessRunner.h>
#include <support/Recorder.h>

using namespace sfx_test;

TEST(SoundscapeExample, bedsCrossOverWithEffectsOnTop) {
    const PulseServer server;
    InstallFolder install;
    install.AddAmbient("low.sfx", "Low", MakeTone({.ms = 900, .frequency = kLow}));
    install.AddAmbient("high.sfx", "High", MakeTone({.ms = 900, .frequency = kHigh}));
    install.AddEffect("bell.sfx", "Bell", MakeTone({.ms = 300, .frequency = 3000}));
    install.Publish();
    Recorder recorder;
    const auto result = ProcessRunner::Run(SOUNDSCAPE, {"3"}, {}, 3 * kDeadline);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "bed low.sfx\neffect bell.sfx\nbed high.sfx\neffect bell.sfx\n");
    ASSERT_TRUE(recorder.WaitForSilence());
    const Pcm heard = recorder.Stop();
    const auto low = Levels(heard, kLow);
    ExpectCrossOver(low, Levels(heard, kHigh));
    const auto bell = Levels(heard, 3000);
    const auto first = Rise(bell, 0.5);
    EXPECT_NEAR(bell.at(first + 1), 0.8 * kFull, 0.1);
    EXPECT_GT(low.at(first + 1), 0.5 * kFull);
}
