#include <sfx/source/EncryptedVorbisFile.h>

#include "PlayerTrouble.h"

using namespace sfx_test;
using std::chrono::milliseconds;
using vemo::audio::DecodeState;
using vemo::audio::SfxPlayerImpl;

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
