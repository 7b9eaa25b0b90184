#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <sfx/source/SfxAudioStream.h>
#include <sfx/source/SfxPanFilter.h>
#include <sfx/source/SfxReverbFilter.h>
#include <sfx/source/UserAudioFile.h>
#include <support/FakeFile.h>
#include <support/Waiting.h>
#ifndef _WIN32
#include <support/SoundFile.h>
#endif

using namespace vemo::audio;
using sfx_test::FakeFile;

namespace {

std::shared_ptr<sfx::SfxDto> recordOf(int repeats, float reverb = 0.0F, float pan = 0.5F) {
    return std::make_shared<sfx::SfxDto>(
        sfx::SfxDto::builder().repeats(repeats).reverb(reverb).pan(pan).build());
}

/// An open stream that is read without QIODevice's buffer in between.
class PulledStream : public SfxAudioStream {
public:
    PulledStream(std::shared_ptr<sfx::SfxDto> record, const SfxFileInterface* file)
        : SfxAudioStream(record, file, nullptr) {
        if (!open(QIODevice::ReadOnly))
            throw std::runtime_error("the stream does not open");
    }
    /// What one read of `size` bytes to `offset` bytes behind an aligned address gives.
    std::vector<char> Pull(qint64 size, std::ptrdiff_t offset = 0) {
        std::vector<char> room(static_cast<std::size_t>(size + offset));
        const qint64 got = std::max<qint64>(readData(room.data() + offset, size), 0);
        return {room.begin() + offset, room.begin() + offset + got};
    }
};

sfx_test::Pcm ramp(std::size_t bytes) {
    sfx_test::Pcm pcm;
    for (std::size_t i = 0; i < bytes / 2; ++i)
        pcm.samples.push_back(static_cast<float>(i % 701) / 701.0F);
    return pcm;
}

std::vector<char> bytesOf(FakeFile& file) {
    const auto [begin, end] = file.Read();
    return {begin, end};
}

} // namespace

TEST(SfxAudioStream, readPlaysOncePlusRepeatsWhateverItsSize) {
    FakeFile file(ramp(1000));
    const std::vector<char> pass = bytesOf(file);
    for (const int repeats : {0, 1, 2, 5}) {
        for (const qint64 size : {4, 400, 500, 999, 1000, 1500, 2000, 4096}) {
            PulledStream stream(recordOf(repeats), &file);
            std::vector<char> heard;
            for (auto chunk = stream.Pull(size); !chunk.empty(); chunk = stream.Pull(size))
                heard.insert(heard.end(), chunk.begin(), chunk.end());
            ASSERT_EQ(heard.size(), pass.size() * (repeats + 1U)) << repeats << " by " << size;
            for (std::size_t at = 0; at < heard.size(); at += pass.size())
                EXPECT_TRUE(std::equal(pass.begin(), pass.end(), &heard[at])) << size;
        }
    }
}

TEST(SfxAudioStream, readWrapsOnceAndEndsOnlyWithoutRepeatsLeft) {
    FakeFile file(ramp(1000));
    SfxAudioStream once(recordOf(1), &file, nullptr);
    ASSERT_TRUE(once.open(QIODevice::ReadOnly));
    std::vector<char> chunk(16384);
    EXPECT_EQ(once.read(chunk.data(), 16384), 2000);
    EXPECT_EQ(once.read(chunk.data(), 16384), -1);

    PulledStream endless(recordOf(-1), &file);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(endless.Pull(i % 2 == 0 ? 4096 : 1000).size(), i % 2 == 0 ? 2000U : 1000U);
}

TEST(SfxAudioStream, openRefusesOtherModesAndFilesWithoutFormat) {
    FakeFile file(ramp(1000));
    SfxAudioStream stream(recordOf(0), &file, nullptr);
    for (const QIODevice::OpenMode mode :
         {QIODevice::OpenMode(QIODevice::ReadWrite), QIODevice::OpenMode(QIODevice::NotOpen),
          QIODevice::ReadOnly | QIODevice::Unbuffered})
        EXPECT_FALSE(stream.open(mode) || stream.isOpen());
    file.SetStage(FakeFile::Stage::Decoding);
    EXPECT_FALSE(stream.open(QIODevice::ReadOnly) || stream.isOpen());

    // Of its own file, too, the stream knows nothing before it is decoded; this one never is.
    SfxAudioStream alone(recordOf(0), nullptr, nullptr);
    EXPECT_FALSE(alone.open(QIODevice::ReadOnly));
    EXPECT_DOUBLE_EQ(alone.duration(), 0.0);
}

TEST(SfxAudioStream, emptyFileAnnouncesItsEndOnlyWithRepeatsLeft) {
    FakeFile file(ramp(0));
    for (const int repeats : {0, 3, -1}) {
        PulledStream stream(recordOf(repeats), &file);
        int announced = 0;
        QObject::connect(&stream, &QIODevice::aboutToClose, [&announced] { ++announced; });
        EXPECT_TRUE(stream.Pull(4).empty());
        EXPECT_EQ(announced, repeats == 0 ? 0 : 1);
    }
}

TEST(SfxAudioStream, closeRewindsWithTheRecordsRepeats) {
    FakeFile file(ramp(1000));
    const auto record = recordOf(1);
    PulledStream stream(record, &file);
    EXPECT_EQ(stream.bytesAvailable(), 1000);
    EXPECT_EQ(stream.Pull(4096).size(), 2000U);
    EXPECT_EQ(stream.bytesAvailable(), -1);
    stream.close();
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    EXPECT_EQ(stream.Pull(4096).size(), 2000U);
    record->setRepeats(0);
    stream.resetStream();
    EXPECT_EQ(stream.Pull(4096).size(), 1000U);
}

TEST(SfxAudioStream, readFiltersReverbThenPanAndAWrapFromTheChunksStart) {
    FakeFile file(ramp(8000));
    const auto record = recordOf(1, 0.8F, 0.2F);
    SfxReverbFilter reverb(record, nullptr);
    SfxPanFilter pan(record, nullptr);
    std::vector<char> expected = bytesOf(file);
    const auto filterFrames = [&](std::int64_t frames) {
        auto* samples = reinterpret_cast<std::int16_t*>(expected.data());
        reverb.apply(samples, frames, 2);
        pan.apply(samples, frames, 2);
    };
    filterFrames(2000);
    const std::vector<char> wrapped = bytesOf(file);
    expected.insert(expected.end(), wrapped.begin(), wrapped.begin() + 4000);
    filterFrames(1000);

    EXPECT_EQ(PulledStream(record, &file).Pull(12000), expected);
    EXPECT_EQ(PulledStream(record, &file).Pull(12000, 1), expected) << "at an odd address";
}

#ifndef _WIN32
TEST(SfxAudioStream, readFiltersFloatFilesAsFloat) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("float.wav");
    const auto tone = sfx_test::MakeTone({.ms = 400}); // more than one block of the conversion
    sfx_test::WriteSoundFile(path.toStdString(), tone, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    UserAudioFile file(QUrl::fromLocalFile(path).toString().toStdString());
    ASSERT_TRUE(sfx_test::WaitFor([&] { return file.stage() == DecodeState::Stage::Ready; }));
    ASSERT_EQ(file.Format().sampleFormat(), QAudioFormat::Float);

    const auto heard = PulledStream(recordOf(0, 0.0F, 0.25F), &file).Pull(1 << 20);
    ASSERT_EQ(heard.size(), tone.samples.size() * sizeof(float));
    for (std::size_t i = 0; i < tone.samples.size(); ++i) {
        float sample = 0.0F;
        std::memcpy(&sample, &heard[4 * i], 4);
        ASSERT_NEAR(sample, tone.samples[i] * (i % 2 == 0 ? 0.75F : 0.25F), 1.6 / 32767.0) << i;
    }
}
#endif
