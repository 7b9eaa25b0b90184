#include <gtest/gtest.h>

#include "PlayerHouse.h"

using namespace sfx_test;
using vemo::audio::DecodeState;
using vemo::audio::SfxPlayerImpl;

namespace {

class PlayerStop : public ::testing::Test {
protected:
    PlayerStop() { PulseServer::Shared(); }

    FakeFile endless_{MakeTone({.ms = 1000, .level = 0.5})};
    PlayerHouse house_;
};

} // namespace

TEST_F(PlayerStop, fadesOutAlongTheCurveAndFinishesTwice) {
    auto& player = house_.Add(Record().repeats(-1).fadeOut(600).build(), &endless_);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    Recorder recorder;
    player.Play();
    ASSERT_TRUE(recorder.WaitForSound());
    ASSERT_TRUE(recorder.WaitForMore(std::chrono::milliseconds(300)));
    player.Stop();
    ASSERT_TRUE(house_.WaitUntilAllDone());
    ASSERT_TRUE(recorder.WaitForSilence());
    EXPECT_EQ(finished.Count(), 2U) << "once from the fade, once from the playback";

    const Pcm heard = recorder.Stop();
    ASSERT_EQ(Stretches(heard, 0).size(), 1U);
    const auto envelope = Envelope(heard, 0, *Heard(heard, 0), 30);
    // From full level to -60 dB the curve takes three quarters of the fade, in equal ratios.
    std::size_t full = 0;
    while (full < envelope.size() && envelope[full] > 0.34)
        ++full;
    const auto fading = static_cast<double>(envelope.size() - full) * 30.0;
    EXPECT_NEAR(fading, 0.75 * 600, 120);
    for (std::size_t i = full + 1; i + 1 < envelope.size(); ++i)
        EXPECT_LT(envelope[i], envelope[i - 1] * 1.05) << i;
}

// The last steps of a fade are still in the sink's buffer when it is done.
TEST_F(PlayerStop, letsEvenAShortFadeBeHeard) {
    auto& player = house_.Add(Record().repeats(-1).fadeOut(120).build(), &endless_);
    Recorder recorder;
    player.Play();
    ASSERT_TRUE(recorder.WaitForSound());
    player.Stop();
    ASSERT_TRUE(recorder.WaitForSilence());
    const Pcm heard = recorder.Stop();
    const Stretch sound = *Heard(heard, 0);
    // The curve passes half level before it ends: an end in full level would be a click.
    const std::size_t last10 = sound.end - FramesOf(10, heard.rate);
    EXPECT_LT(Peak(heard, 0, {last10, sound.end}), 0.1);
    ASSERT_TRUE(house_.WaitUntilAllDone());
}

TEST_F(PlayerStop, endsAtOnceWithoutAFadeOut) {
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    Recorder recorder;
    player.Play();
    ASSERT_TRUE(recorder.WaitForSound());
    player.Stop();
    ASSERT_TRUE(house_.WaitUntilAllDone());
    EXPECT_TRUE(recorder.WaitForSilence());
}

TEST_F(PlayerStop, urgentOnlyCancelsTheFadeUnderWay) {
    auto& player = house_.Add(Record().repeats(-1).fadeIn(60000).build(), &endless_);
    auto& steady = house_.Add(Record().repeats(-1).build(), &endless_);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    SignalLog steadyFinished(&steady, &SfxPlayerImpl::sfxFinished);
    // The fade-in of a sound counts only when the sound is longer than it.
    player.ReplaceSfxData(Record().repeats(-1).fadeIn(1900).build());
    Recorder recorder;
    steady.Play();
    ASSERT_TRUE(recorder.WaitForSound());
    player.Play();
    ASSERT_TRUE(recorder.WaitForMore(std::chrono::milliseconds(300)));
    player.Stop(true);
    steady.Stop(true);
    ASSERT_TRUE(WaitFor([&] { return player.Done(); }));
    EXPECT_EQ(finished.Count(), 1U)
        << "a cancelled fade does not announce the end, its playback does";
    ASSERT_TRUE(recorder.WaitForMore(std::chrono::milliseconds(300)));
    EXPECT_FALSE(steady.Done());
    EXPECT_EQ(steadyFinished.Count(), 0U);
    steady.Stop();
    EXPECT_TRUE(house_.WaitUntilAllDone());
}

TEST_F(PlayerStop, reachesAPlaybackThatWaitsForItsFile) {
    FakeFile undecoded(MakeTone({.ms = 500}), DecodeState::Stage::Decoding);
    for (const bool urgent : {false, true}) {
        auto& player = house_.Add(Record().repeats(-1).fadeOut(500).build(), &undecoded);
        SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
        player.Play();
        player.Stop(urgent);
        ASSERT_TRUE(WaitFor([&] { return player.Done(); }));
        EXPECT_EQ(finished.Count(), 1U);
    }
    EXPECT_EQ(undecoded.Reads(), 0);
}

TEST_F(PlayerStop, alwaysReachesThePlayStraightBeforeIt) {
    auto& player = house_.Add(Record().repeats(-1).fadeOut(30).build(), &endless_);
    for (int i = 0; i < 50; ++i) {
        player.Play();
        if (i % 2 == 1)
            QThread::usleep(static_cast<unsigned long>(i) * 40);
        player.Stop();
        ASSERT_TRUE(WaitFor([&] { return player.Done(); })) << i;
    }
}

TEST_F(PlayerStop, reachesAPlaybackThatWaitsForAThread) {
    house_.Pool().setMaxThreadCount(1);
    auto& first = house_.Add(Record().repeats(-1).build(), &endless_);
    auto& second = house_.Add(Record().repeats(-1).build(), &endless_);
    first.Play();
    second.Play();
    second.Stop();
    EXPECT_TRUE(WaitFor([&] { return second.Done(); }));
    EXPECT_FALSE(first.Done());
    first.Stop();
    EXPECT_TRUE(house_.WaitUntilAllDone());
}

TEST_F(PlayerStop, fadesAndEndsEachOfSixteenOnOnePool) {
    FakeFile quiet(MakeTone({.ms = 1000, .level = 0.05}));
    std::vector<SfxPlayerImpl*> players;
    for (int i = 0; i < 16; ++i)
        players.push_back(&house_.Add(Record().repeats(-1).fadeOut(300).build(), &quiet));
    std::vector<std::unique_ptr<SignalLog<QString>>> finished;
    Recorder recorder;
    for (auto* player : players) {
        finished.push_back(
            std::make_unique<SignalLog<QString>>(player, &SfxPlayerImpl::sfxFinished));
        player->Play();
    }
    ASSERT_TRUE(recorder.WaitForSound());
    ASSERT_TRUE(recorder.WaitForMore(std::chrono::milliseconds(1000)));
    for (auto* player : players)
        player->Stop();
    ASSERT_TRUE(house_.WaitUntilAllDone());
    for (const auto& log : finished)
        EXPECT_EQ(log->Count(), 2U) << "it was cut off, not faded";
    EXPECT_TRUE(recorder.WaitForSilence());
}
