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
    auto result = ProcessRunner::Run(SOUNDSCAPE, {"3"}, {}, 3 * kDeadline);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    result.out.replace("\r\n", "\n");
    EXPECT_EQ(result.out, "bed low.sfx\neffect bell.sfx\nbed high.sfx\neffect bell.sfx\n");
    ASSERT_TRUE(recorder.WaitForSilence());
    const Pcm heard = recorder.Stop();
    const auto low = Levels(heard, kLow);
    ExpectCrossOver(low, Levels(heard, kHigh));
    const auto bell = Levels(heard, 3000);
    EXPECT_NEAR(*std::max_element(bell.begin(), bell.end()), 0.8 * kFull, 0.05);
    EXPECT_TRUE(BothSound(bell, low, 0.5)) << "on top of the bed";
}
