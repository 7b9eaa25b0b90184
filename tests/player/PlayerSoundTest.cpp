#include <gtest/gtest.h>

#include <sfx/source/EncryptedVorbisFile.h>
#include <sfx/source/UserAudioFile.h>
#include <support/SoundFile.h>

#include "PlayerHouse.h"

using namespace sfx_test;
using vemo::audio::EncryptedVorbisFile;
using vemo::audio::SfxPlayerImpl;
using vemo::audio::UserAudioFile;

namespace {

class PlayerSound : public ::testing::Test {
protected:
    PlayerSound() { PulseServer::Shared(); }

    // What is heard of one playback, from its first sound to the silence after it.
    Pcm Hear(SfxPlayerImpl& player) {
        Recorder recorder;
        player.Play();
        EXPECT_TRUE(recorder.WaitForSilence());
        EXPECT_TRUE(house_.WaitUntilAllDone());
        return recorder.Stop();
    }

    PlayerHouse house_;
    QTemporaryDir folder_;
};

} // namespace

TEST_F(PlayerSound, playsAnInstalledEffectThatHasNotBeenDecodedYet) {
    InstallFolder install;
    EncryptedVorbisFile file(
        install.AddEffect("tone.sfx", "Tone", MakeTone({.ms = 2000, .frequency = 700})));
    auto& player = house_.Add(Record().build(), &file);
    const Pcm heard = Hear(player);
    EXPECT_NEAR(HeardMs(heard, 0, 0.01), 2000, 5);
    EXPECT_NEAR(Frequency(heard, 0, *Heard(heard, 0, 0.01)), 700, 5);
    EXPECT_FLOAT_EQ(player.GetDuration(), 4.0F);
}

TEST_F(PlayerSound, pansLinearly) {
    FakeFile file(MakeTone({.ms = 300, .level = 0.8}));
    const Pcm heard = Hear(house_.Add(Record().pan(0.25F).build(), &file));
    EXPECT_NEAR(Peak(heard, 0, Whole(heard)), 0.6, 0.02);
    EXPECT_NEAR(Peak(heard, 1, Whole(heard)), 0.2, 0.02);
}

TEST_F(PlayerSound, echoesWithReverb) {
    // A click every 16 KiB of stereo, the length of the sink's gulps: the echo of one chunk falls
    // into the next.
    Pcm clicks = MakeSilence(400, 48000);
    for (std::size_t frame = 1000; frame < 1048; ++frame)
        clicks.samples[frame * 2] = clicks.samples[frame * 2 + 1] = 0.5F;
    FakeFile file(clicks);
    const Pcm dry = Hear(house_.Add(Record().build(), &file));
    const Pcm wet = Hear(house_.Add(Record().reverb(1.0F).build(), &file));
    EXPECT_EQ(Stretches(dry, 0).size(), 1U);
    const auto echoes = Stretches(wet, 0);
    ASSERT_GE(echoes.size(), 2U);
    EXPECT_NEAR(Stretch({echoes[0].begin, echoes[1].begin}).Ms(48000), 4096 / 48.0, 1.0);
    EXPECT_NEAR(Peak(wet, 0, echoes[1]), 0.25, 0.02);
}

TEST_F(PlayerSound, keepsTheRunningSoundWhenTheRecordChanges) {
    FakeFile file(MakeTone({.ms = 600, .level = 0.5}));
    auto& player = house_.Add(Record().volume(0.5F).build(), &file);
    Recorder recorder;
    player.Play();
    ASSERT_TRUE(recorder.WaitForSound());
    player.SetPan(0.0F);
    player.SetVolume(1.0F);
    ASSERT_TRUE(recorder.WaitForSilence());
    EXPECT_TRUE(house_.WaitUntilAllDone());
    const Pcm heard = recorder.Stop();
    EXPECT_NEAR(HeardMs(heard, 1), 600, 5);
    EXPECT_NEAR(Peak(heard, 1, Whole(heard)), 0.25, 0.02);

    const Pcm next = Hear(player);
    EXPECT_NEAR(Peak(next, 0, Whole(next)), 0.5, 0.02);
    EXPECT_LT(Peak(next, 1, Whole(next)), kSilence);
}

TEST_F(PlayerSound, mixesTwoPlaybacksOfOnePlayer) {
    FakeFile file(MakeTone({.ms = 500, .level = 0.3}));
    auto& player = house_.Add(Record().build(), &file);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    Recorder recorder;
    player.Play();
    ASSERT_TRUE(recorder.WaitForSound());
    player.Play();
    ASSERT_TRUE(finished.WaitForCount(1));
    EXPECT_FALSE(player.Done());
    ASSERT_TRUE(finished.WaitForCount(2));
    EXPECT_TRUE(WaitFor([&] { return player.Done(); }));
    ASSERT_TRUE(recorder.WaitForSilence());
    EXPECT_GT(HeardMs(recorder.Stop(), 0), 510);
}

// The decoder gives 16-bit samples for WAV and float ones for Vorbis; both must sound, also when
// a filter that only knows 16 bit stands in the way.
TEST_F(PlayerSound, playsUserFilesInTheFormatTheyDecodeTo) {
    const std::string folder = folder_.path().toStdString();
    const Pcm tone = MakeTone({.ms = 400, .frequency = 600, .level = 0.4});
    WriteSoundFile(folder + "/tone.wav", tone);
    WriteBytes(folder + "/tone.ogg", EncodeVorbis(tone));
    for (const char* name : {"/tone.wav", "/tone.ogg"}) {
        UserAudioFile file(FileUrl(QString::fromStdString(folder + name)));
        auto& player = house_.Add(Record().pan(0.0F).build(), &file);
        const Pcm heard = Hear(player);
        EXPECT_NEAR(HeardMs(heard, 0, 0.01), 400, 5) << name;
        EXPECT_NEAR(ToneLevel(heard, 0, *Heard(heard, 0, 0.01), 600), 0.4, 0.02) << name;
        EXPECT_LT(Peak(heard, 1, Whole(heard)), kSilence) << name;
        // As the platform's decoder tells it, which on Windows is rounded.
        EXPECT_NEAR(player.GetDuration(), 0.4, 0.02) << name;
    }
}
