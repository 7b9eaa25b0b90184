#include <gtest/gtest.h>

#include <sfx/model/SfxException.h>
#include <sfx/source/EncryptedVorbisFile.h>

#include "PlayerHouse.h"

using namespace sfx_test;
using std::chrono::milliseconds;
using vemo::audio::DecodeState;
using vemo::audio::SfxPlayerImpl;

namespace {

// A test of a server's death or a missing output has a server of its own: each runs in a process
// of its own.
class PlayerTrouble : public ::testing::Test {
protected:
    void ExpectEnd(SfxPlayerImpl& player, milliseconds deadline = kDeadline) {
        SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
        player.Play();
        ExpectEnded(player, finished, deadline);
    }
    void ExpectEnded(SfxPlayerImpl& player, const SignalLog<QString>& finished,
                     milliseconds deadline = kDeadline) {
        EXPECT_TRUE(WaitFor([&] { return player.Done(); }, deadline));
        EXPECT_EQ(finished.Count(), 1U);
        player.WaitUntilDone();
    }

    FakeFile endless_{MakeTone({.ms = 1000, .level = 0.5})};
    PlayerHouse house_;
};

} // namespace

TEST_F(PlayerTrouble, endsWithoutAFileOrWithOneThatCannotBeDecoded) {
    PulseServer::Shared();
    vemo::audio::EncryptedVorbisFile missing("no/such/effect.sfx");
    FakeFile failing(MakeTone({}), DecodeState::Stage::Decoding);
    FakeFile empty(Pcm{.samples = {}});
    ExpectEnd(house_.Add(Record().build(), nullptr));
    ExpectEnd(house_.Add(Record().build(), &missing));
    ExpectEnd(house_.Add(Record().repeats(-1).build(), &empty));
    auto& player = house_.Add(Record().build(), &failing);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    player.Play();
    failing.SetStage(DecodeState::Stage::Failed);
    ExpectEnded(player, finished);
}

TEST_F(PlayerTrouble, playsOnceTheFileIsDecodedHoweverLateThatIs) {
    PulseServer::Shared();
    FakeFile late(MakeTone({.ms = 300}), DecodeState::Stage::Decoding);
    auto& player = house_.Add(Record().build(), &late);
    Recorder recorder;
    player.Play();
    ASSERT_TRUE(recorder.WaitForMore(milliseconds(300)));
    EXPECT_FALSE(player.Done());
    late.SetStage(DecodeState::Stage::Ready);
    ASSERT_TRUE(recorder.WaitForSilence());
    EXPECT_NEAR(HeardMs(recorder.Stop(), 0), 300, 5);
    EXPECT_TRUE(house_.WaitUntilAllDone());
}

TEST_F(PlayerTrouble, endsWithoutAnOutput) {
    PulseServer server({.withSink = false});
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    EXPECT_THROW(
        try { player.SetOutputDevice(L"any"); } catch (const vemo::audio::SfxException& fault) {
            EXPECT_STREQ(fault.what(), "No audio devices found");
            throw;
        },
        vemo::audio::SfxException);
    ExpectEnd(player);
}

TEST_F(PlayerTrouble, endsWhenTheOutputIsTakenAway) {
    PulseServer server;
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    player.SetOutputDevice(nullptr);
    {
        Recorder recorder;
        player.Play();
        ASSERT_TRUE(recorder.WaitForSound());
    }
    server.RemoveSink(PulseServer::kSink);
    ExpectEnded(player, finished);
}

TEST_F(PlayerTrouble, endsWhenTheServerDies) {
    PulseServer server;
    auto& player = house_.Add(Record().repeats(-1).fadeOut(200).build(), &endless_);
    auto& stopped = house_.Add(Record().repeats(-1).fadeOut(200).build(), &endless_);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    {
        Recorder recorder;
        player.Play();
        stopped.Play();
        ASSERT_TRUE(recorder.WaitForSound());
        server.Kill();
    }
    stopped.Stop();
    EXPECT_TRUE(WaitFor([&] { return player.Done() && stopped.Done(); }, milliseconds(20000)));
    EXPECT_GE(finished.Count(), 1U);
    // And what is asked for afterwards ends as well.
    ExpectEnd(player, milliseconds(20000));
}

// A frozen server holds whoever opens a sink. The pool gets a thread for the one that is held, so
// that the next effect plays as soon as the server answers again.
TEST_F(PlayerTrouble, givesUpAPlaybackThatTheServerHolds) {
    PulseServer server;
    house_.Pool().setMaxThreadCount(1);
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    auto& next = house_.Add(Record().repeats(-1).build(), &endless_);
    player.SetOutputDevice(nullptr);
    server.Freeze();
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    player.Play();
    ExpectEnded(player, finished, milliseconds(20000));
    server.Thaw();
    Recorder recorder;
    next.Play();
    EXPECT_TRUE(recorder.WaitForSound());
    next.Stop();
    EXPECT_TRUE(house_.WaitUntilAllDone());
    EXPECT_EQ(finished.Count(), 1U);
}

TEST_F(PlayerTrouble, endsThePlaybacksOfAPlayerThatIsDestroyedTooEarly) {
    PulseServer::Shared();
    FakeFile undecoded(MakeTone({}), DecodeState::Stage::Decoding);
    auto house = std::make_unique<PlayerHouse>();
    Recorder recorder;
    house->Add(Record().repeats(-1).build(), &endless_).Play();
    house->Add(Record().repeats(-1).build(), &undecoded).Play();
    ASSERT_TRUE(recorder.WaitForSound());
    house.reset();
    EXPECT_TRUE(recorder.WaitForSilence());
}
