#include <gtest/gtest.h>

#include <sfx/model/CustomAudioException.h>
#include <sfx/source/UserAudioFile.h>
#include <support/EffectMaker.h>
#include <support/Sanitizers.h>
#include <support/SignalLog.h>
#include <support/SoundFile.h>

using namespace sfx_test;
using vemo::audio::DecodeState;
using vemo::audio::UserAudioFile;

namespace {

// Media Foundation decodes Vorbis to integers, is vague about a file's length, and has no error of
// its own for a file whose name promises more than it holds.
#ifdef _WIN32
constexpr auto kVorbis = QAudioFormat::Int16;
constexpr double kLength = 0.05;
constexpr auto kGarbage = "1";
#else
constexpr auto kVorbis = QAudioFormat::Float;
constexpr double kLength = 0.001;
constexpr auto kGarbage = "2";
#endif

class UserFile : public ::testing::Test {
protected:
    std::string Path(const char* name) const { return folder_.filePath(name).toStdString(); }
    std::string Url(const char* name) const { return FileUrl(folder_.filePath(name)); }

    void ExpectDecoded(const char* name, QAudioFormat::SampleFormat format) {
        UserAudioFile file(Url(name));
        SignalLog ready(&file, &UserAudioFile::isReady);
        EXPECT_EQ(file.Duration(), 0.0F);
        EXPECT_EQ(file.Path(), Url(name));
        ASSERT_TRUE(ready.WaitForCount(1));
        EXPECT_EQ(file.stage(), DecodeState::Stage::Ready);
        EXPECT_EQ(file.Format().sampleFormat(), format);
        EXPECT_EQ(file.ChannelCount(), 2U);
        EXPECT_EQ(file.SampleRate(), 44100.0);
        EXPECT_NEAR(file.Duration(), 1.5, kLength);
        // The decoder may round its last buffer up by a few frames.
        const auto frames = static_cast<double>(file.Read().second - file.Read().first) /
                            file.Format().bytesPerFrame();
        EXPECT_NEAR(frames, static_cast<double>(tone_.Frames()), 10);
    }

    const Pcm tone_ = MakeTone({.ms = 1500, .rate = 44100});
    QTemporaryDir folder_;
};

} // namespace

TEST_F(UserFile, keepsSixteenBitsOfAWave) {
    WriteSoundFile(Path("tone.wav"), tone_);
    ExpectDecoded("tone.wav", QAudioFormat::Int16);
}

TEST_F(UserFile, keepsTheSamplesOfVorbis) {
    WriteBytes(Path("tone.ogg"), EncodeVorbis(tone_));
    ExpectDecoded("tone.ogg", kVorbis);
}

TEST_F(UserFile, throwsOutOfTheEventLoopWhenItCannotBeDecoded) {
    WriteBytes(Path("garbage.wav"), std::vector<unsigned char>(5000, 'x'));
    for (const auto& [name, code] :
         {std::pair("missing.wav", "1"), std::pair("garbage.wav", kGarbage)}) {
        UserAudioFile file(Url(name));
        SignalLog ready(&file, &UserAudioFile::isReady);
        try {
            // The exception passes through glib's C frames, where Qt's objects are left behind.
            const LeaksAllowed whatThatCosts;
            WaitFor([] { return false; });
            ADD_FAILURE() << name << ": nothing came out of the event loop";
        } catch (const vemo::sfx::CustomAudioException& fault) {
            EXPECT_EQ(fault.Priority(), "warning");
            EXPECT_EQ(fault.Message(), std::string("Error decoding audio file: ") + code);
        }
        EXPECT_EQ(file.stage(), DecodeState::Stage::Failed);
        EXPECT_NE(file.failure().find(name), std::string::npos) << file.failure();
        EXPECT_EQ(file.ChannelCount(), 0U);
        EXPECT_EQ(ready.Count(), 0U);
    }
}
