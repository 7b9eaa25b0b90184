#include <utility>

#include <gtest/gtest.h>

#include "PlayerHouse.h"

using namespace sfx_test;
using std::chrono::milliseconds;
using vemo::audio::SfxPlayerImpl;

namespace {

class PlayerFade : public ::testing::Test {
protected:
    PlayerFade() { PulseServer::Shared(); }
    ~PlayerFade() override {
        for (auto* player : players_)
            player->Stop();
        EXPECT_TRUE(house_.WaitUntilAllDone());
    }

    SfxPlayerImpl& Start(Recorder& recorder, vemo::audio::sfx::SfxDto record) {
        players_.push_back(&house_.Add(std::move(record), &endless_));
        players_.back()->Play();
        EXPECT_TRUE(recorder.WaitForSound());
        return *players_.back();
    }
    // The level heard over the newest 100 ms; full as long as there are not so many.
    static double LevelNow(const Recorder& recorder) {
        const Pcm heard = recorder.Heard();
        const std::size_t window = FramesOf(100, heard.rate);
        const auto sound = Heard(heard, 0);
        if (!sound || heard.Frames() - sound->begin < window)
            return 0.5;
        return Rms(heard, 0, {heard.Frames() - window, heard.Frames()}) * std::sqrt(2.0);
    }

    FakeFile endless_{MakeTone({.ms = 1000, .level = 0.5})};
    PlayerHouse house_;
    std::vector<SfxPlayerImpl*> players_;
};

} // namespace

TEST_F(PlayerFade, fadesInFromSilence) {
    Recorder recorder;
    Start(recorder, Record().repeats(-1).fadeIn(900).build());
    ASSERT_TRUE(WaitFor([&] { return LevelNow(recorder) < 0.4; }));
    ASSERT_TRUE(WaitFor([&] { return LevelNow(recorder) > 0.49; }));
    const Pcm heard = recorder.Stop();
    const auto envelope = Envelope(heard, 0, *Heard(heard, 0), 30);
    // -60 dB to full level is three quarters of the way.
    const auto full =
        std::find_if(envelope.begin(), envelope.end(), [](double level) { return level > 0.34; });
    EXPECT_NEAR(static_cast<double>(full - envelope.begin()) * 30.0, 0.7 * 900, 120);
    EXPECT_TRUE(std::is_sorted(envelope.begin(), full));
}

// The duration value of an effect is twice its playing time, and that is what counts here.
TEST_F(PlayerFade, startsAtFullVolumeWhenTheSoundIsNoLongerThanTheFadeIn) {
    Recorder recorder;
    Start(recorder, Record().fadeIn(2000).build());
    ASSERT_TRUE(recorder.WaitForMore(milliseconds(200)));
    EXPECT_NEAR(Peak(recorder.Heard(), 0, Whole(recorder.Heard())), 0.5, 0.02);
}

TEST_F(PlayerFade, movesToANewVolumeAndStaysThere) {
    Recorder recorder;
    auto& player = Start(recorder, Record().repeats(-1).build());
    player.FadeTo(0.2F, 300);
    ASSERT_TRUE(WaitFor([&] { return std::abs(LevelNow(recorder) - 0.1) < 0.005; }));
    ASSERT_TRUE(recorder.WaitForMore(milliseconds(300)));
    EXPECT_NEAR(LevelNow(recorder), 0.1, 0.005);
    player.FadeTo(1.0F, 90);
    EXPECT_TRUE(WaitFor([&] { return std::abs(LevelNow(recorder) - 0.5) < 0.01; }));
    EXPECT_FLOAT_EQ(player.Volume(), 1.0F);
    EXPECT_FALSE(player.Done());
}

TEST_F(PlayerFade, endsThePlaybackWhenAnotherFadeIsStillRunning) {
    Recorder recorder;
    auto& player = Start(recorder, Record().repeats(-1).build());
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    player.FadeTo(0.2F, 60000);
    ASSERT_TRUE(WaitFor([&] { return LevelNow(recorder) < 0.495; }));
    player.FadeTo(1.0F, 300);
    ASSERT_TRUE(WaitFor([&] { return player.Done(); }));
    EXPECT_EQ(finished.Count(), 1U);
    EXPECT_TRUE(recorder.WaitForSilence());
}

TEST_F(PlayerFade, holdsWhileSuspendedAndGoesOnWhenResumed) {
    Recorder recorder;
    auto& player = Start(recorder, Record().repeats(-1).build());
    player.FadeTo(0.1F, 1500);
    ASSERT_TRUE(WaitFor([&] { return LevelNow(recorder) < 0.4; }));
    Q_EMIT player.fadeSuspensionRequested();
    // What is buffered may still sink a little.
    double held = 0.0;
    ASSERT_TRUE(WaitFor([&] {
        const double before = std::exchange(held, LevelNow(recorder));
        return recorder.WaitForMore(milliseconds(200)) && std::abs(held - before) < 0.001;
    }));
    EXPECT_GT(held, 0.1);
    ASSERT_TRUE(recorder.WaitForMore(milliseconds(400)));
    EXPECT_NEAR(LevelNow(recorder), held, 0.002);
    Q_EMIT player.fadeResumeRequested();
    EXPECT_TRUE(WaitFor([&] { return std::abs(LevelNow(recorder) - 0.05) < 0.005; }));
}

TEST_F(PlayerFade, endsWithThePlaybackEvenWhenSuspended) {
    Recorder recorder;
    auto& player = Start(recorder, Record().build());
    player.FadeTo(0.1F, 60000);
    Q_EMIT player.fadeSuspensionRequested();
    EXPECT_TRUE(WaitFor([&] { return player.Done(); }, milliseconds(3000)));
}
