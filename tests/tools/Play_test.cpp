#include "PlayTest.h"

#include <algorithm>
#include <csignal>

namespace {

using namespace sfx_test;
using testing::HasSubstr;

using Play = PlayTest;

TEST_F(Play, playSoundsTheWholeEffectAndShowsIt) {
    Recorder recorder;
    const Result result = run(command({"Low", "--volume", "0.5"}));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out.toStdString(),
                testing::AllOf(HasSubstr("playing low.sfx (Low), 0.60 s, volume 0.5\n"),
                               testing::AnyOf(HasSubstr("-15.0 dB\n"), HasSubstr("-15.1 dB\n")),
                               HasSubstr("finished low.sfx")));
    ASSERT_TRUE(recorder.WaitForSilence());
    const Pcm heard = recorder.Stop();
    EXPECT_NEAR(soundingMs(heard, 0), 600, 15);
    const auto stretch = Heard(heard, 0);
    ASSERT_TRUE(stretch);
    EXPECT_NEAR(Peak(heard, 0, *stretch), 0.25, 0.05);
}

TEST_F(Play, playPassesThePanOn) {
    const Pcm heard = hear({"low.sfx", "--pan", "0"});
    EXPECT_NEAR(soundingMs(heard, 0), 600, 15);
    EXPECT_EQ(HeardMs(heard, 1), 0);
}

TEST_F(Play, playRepeatsAnEffect) {
    EXPECT_NEAR(soundingMs(hear({"low", "--repeats", "2"}), 0), 1800, 30);
}

TEST_F(Play, playRoundsAShortFadeInUp) {
    Recorder recorder;
    EXPECT_THAT(run(command({"low", "--fade-in", "10"})), failedWith(0, "30 ms"));
    ASSERT_TRUE(recorder.WaitForSilence());
    EXPECT_GT(soundingMs(recorder.Stop(), 0), 400);
}

TEST_F(Play, playGoesThroughEffectsInTurn) {
    const Pcm heard = hear({"low", "high"});
    std::string order;
    for (const Stretch& stretch : Stretches(heard, 0)) {
        order += ToneLevel(heard, 0, stretch, LOW) > ToneLevel(heard, 0, stretch, HIGH) ? 'l' : 'h';
    }
    EXPECT_THAT(order, testing::MatchesRegex("l+h+"));
    EXPECT_NEAR(soundingMs(heard, 0), 1200, 30);
}

TEST_F(Play, playTogetherMixesEffects) {
    const Pcm heard = hear({"low", "high", "--together", "--volume", "0.5"});
    const auto stretch = Heard(heard, 0);
    ASSERT_TRUE(stretch);
    const std::size_t window = FramesOf(50, heard.rate);
    double loudest = 0;
    for (std::size_t at = stretch->begin; at + window <= stretch->end; at += window / 2) {
        const Stretch piece{at, at + window};
        loudest = std::max(
            loudest, std::min(ToneLevel(heard, 0, piece, LOW), ToneLevel(heard, 0, piece, HIGH)));
    }
    // In turn, no window would hold more than half of each: 0.125.
    EXPECT_GT(loudest, 0.2);
}

TEST_F(Play, playStopsWithTheFadeOut) {
    const Pcm heard = hear({"long", "--stop-after", "0.5", "--fade-out", "600"});
    const auto stretch = Heard(heard, 0);
    ASSERT_TRUE(stretch);
    EXPECT_GT(stretch->Ms(heard.rate), 600);
    EXPECT_LT(stretch->Ms(heard.rate), 5000);
    const auto levels = Envelope(heard, 0, *stretch, 50);
    EXPECT_LT(levels.back(), 0.1 * levels.front());
}

TEST_F(Play, firstInterruptFadesOut) {
    Recorder recorder;
    ProcessRunner tool(toolPath(), list(command({"long", "high", "--fade-out", "600"})));
    ASSERT_TRUE(recorder.WaitForSound());
    tool.SendSignal(SIGINT);
    EXPECT_THAT(tool.Finish(), failedWith(130, "interrupted"));
    ASSERT_TRUE(recorder.WaitForSilence());
    const Pcm heard = recorder.Stop();
    const auto stretch = Heard(heard, 0);
    ASSERT_TRUE(stretch);
    const auto levels = Envelope(heard, 0, *stretch, 50);
    ASSERT_GE(levels.size(), 5U);
    EXPECT_LT(levels.back(), 0.1 * levels.front());
    EXPECT_LT(ToneLevel(heard, 0, *stretch, HIGH), 0.01) << "the next effect must not start";
}

TEST_F(Play, secondInterruptLeavesAtOnce) {
    Recorder recorder;
    ProcessRunner tool(toolPath(), list(command({"long", "--fade-out", "60000"})));
    ASSERT_TRUE(recorder.WaitForSound());
    tool.SendSignal(SIGINT);
    ASSERT_TRUE(tool.WaitForOutput("fading out"));
    tool.SendSignal(SIGTERM);
    const Result result = tool.Finish();
    EXPECT_EQ(result.exitCode, 130);
    EXPECT_FALSE(result.timedOut);
}

TEST_F(Play, devicesMarksTheOneThatPlays) {
    const auto devices = parse(run({"devices", "--json"}).out);
    EXPECT_EQ(std::count_if(devices.Begin(), devices.End(),
                            [](const auto& device) { return device["default"].GetBool(); }),
              1);
}

TEST_F(Play, playRefusesAnEffectThatDoesNotDecode) {
    writeText("out/low.sfx", "text");
    EXPECT_THAT(run(command({"high", "low"})), failedWith(1, at("out/low.sfx")));
}

} // namespace
