#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryFile>
#include <QUrl>

#include <gtest/gtest.h>

#include <sfx/source/SfxAudioStream.h>
#include <sfx/source/SfxPanFilter.h>
#include <sfx/source/SfxReverbFilter.h>
#include <sfx/source/UserAudioFile.h>

using namespace vemo::audio;

namespace {

struct MemoryFile : SfxFileInterface {
    std::vector<char> pcm;
    unsigned int channels = 2;

    explicit MemoryFile(std::size_t bytes) : pcm(bytes) {
        for (std::size_t i = 0; i < bytes; ++i)
            pcm[i] = static_cast<char>(i * 37 + i / 256);
    }
    std::pair<const char*, const char*> Read() override {
        return {pcm.data(), pcm.data() + pcm.size()};
    }
    float Duration() const override { return 2.5F; }
    unsigned int ChannelCount() const override { return channels; }
    double SampleRate() const override { return 44100.0; }
    std::string Path() override { return {}; }
};

struct PulledStream : SfxAudioStream {
    using SfxAudioStream::readData;
    using SfxAudioStream::SfxAudioStream;
    using SfxAudioStream::writeData;
};

std::shared_ptr<sfx::SfxDto> record(int repeats, float reverb = 0.0F, float pan = 0.5F) {
    return std::make_shared<sfx::SfxDto>(
        sfx::SfxDto::builder().repeats(repeats).reverb(reverb).pan(pan).build());
}

std::vector<char> pull(PulledStream& stream, qint64 size) {
    std::vector<char> chunk(static_cast<std::size_t>(size));
    chunk.resize(
        static_cast<std::size_t>(std::max<qint64>(0, stream.readData(chunk.data(), size))));
    return chunk;
}

void filterBy(SfxAudioFilterInterface& filter, std::vector<char>& chunk, std::int64_t frames) {
    filter.apply(reinterpret_cast<std::int16_t*>(chunk.data()), frames, 2);
}

} // namespace

TEST(SfxAudioStream, playsOncePlusRepeatsWhateverTheReadSize) {
    MemoryFile file(1000);
    for (const int repeats : {0, 1, 2, 5}) {
        for (const qint64 size : {4, 400, 500, 999, 1000, 1500, 2000, 4096}) {
            PulledStream stream(record(repeats), &file, nullptr);
            ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
            std::vector<char> heard;
            for (auto chunk = pull(stream, size); !chunk.empty(); chunk = pull(stream, size)) {
                ASSERT_LE(chunk.size(), 2000U);
                heard.insert(heard.end(), chunk.begin(), chunk.end());
            }
            std::vector<char> expected;
            for (int pass = 0; pass <= repeats; ++pass)
                expected.insert(expected.end(), file.pcm.begin(), file.pcm.end());
            EXPECT_EQ(heard, expected) << repeats << " repeats, reads of " << size;
            char byte = 0;
            EXPECT_EQ(stream.readData(&byte, 1), -1);
        }
    }
}

TEST(SfxAudioStream, readWrapsOnceThenEnds) {
    MemoryFile file(1000);
    SfxAudioStream stream(record(1), &file, nullptr);
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    std::vector<char> chunk(16384);
    EXPECT_EQ(stream.read(chunk.data(), 16384), 2000);
    EXPECT_EQ(stream.read(chunk.data(), 16384), -1);
}

TEST(SfxAudioStream, neverEndsWhenRepeatedWithoutEnd) {
    MemoryFile file(1000);
    PulledStream stream(record(-1), &file, nullptr);
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(pull(stream, i % 2 == 0 ? 4096 : 1000).size(), i % 2 == 0 ? 2000U : 1000U);
}

TEST(SfxAudioStream, openRefusesOtherModesAndUnreadyFiles) {
    MemoryFile file(1000);
    PulledStream stream(record(0), &file, nullptr);
    for (const QIODevice::OpenMode mode :
         {QIODevice::OpenMode(QIODevice::NotOpen), QIODevice::OpenMode(QIODevice::ReadWrite),
          QIODevice::OpenMode(QIODevice::WriteOnly), QIODevice::ReadOnly | QIODevice::Unbuffered}) {
        EXPECT_FALSE(stream.open(mode));
        EXPECT_FALSE(stream.isOpen());
    }
    file.channels = 0;
    EXPECT_FALSE(stream.open(QIODevice::ReadOnly));
    char byte = 0;
    EXPECT_EQ(stream.readData(&byte, 1), -1);
    EXPECT_EQ(stream.writeData(&byte, 1), -1);
    EXPECT_FALSE(stream.canReadLine());
}

TEST(SfxAudioStream, emptyFileAnnouncesItsEndOnlyWithRepeatsLeft) {
    MemoryFile file(0);
    for (const int repeats : {0, 3, -1}) {
        PulledStream stream(record(repeats), &file, nullptr);
        ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
        int announced = 0;
        QObject::connect(&stream, &QIODevice::aboutToClose, [&announced] { ++announced; });
        char byte = 0;
        EXPECT_EQ(stream.readData(&byte, 1), -1);
        EXPECT_EQ(announced, repeats == 0 ? 0 : 1);
    }
}

TEST(SfxAudioStream, closeRewindsWithTheRecordsRepeats) {
    MemoryFile file(1000);
    const auto sound = record(1);
    PulledStream stream(sound, &file, nullptr);
    stream.resetStream();
    EXPECT_EQ(stream.bytesAvailable(), -1);
    EXPECT_DOUBLE_EQ(stream.duration(), 2.5);
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    EXPECT_EQ(stream.bytesAvailable(), 1000);
    EXPECT_EQ(pull(stream, 4096).size(), 2000U);
    EXPECT_EQ(stream.bytesAvailable(), -1);
    stream.close();
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    EXPECT_EQ(pull(stream, 4096).size(), 2000U);
    EXPECT_EQ(pull(stream, 4096).size(), 0U);
    sound->setRepeats(0);
    stream.resetStream();
    EXPECT_EQ(pull(stream, 4096).size(), 1000U);
}

TEST(SfxAudioStream, filtersReverbThenPanAndTheWrapFromTheChunksStart) {
    MemoryFile file(8000);
    const auto sound = record(1, 0.8F, 0.2F);
    PulledStream stream(sound, &file, nullptr);
    PulledStream unaligned(sound, &file, nullptr);
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    ASSERT_TRUE(unaligned.open(QIODevice::ReadOnly));
    SfxReverbFilter reverb(sound, nullptr);
    SfxPanFilter pan(sound, nullptr);

    std::vector<char> expected = file.pcm;
    filterBy(reverb, expected, 2000);
    filterBy(pan, expected, 2000);
    expected.insert(expected.end(), file.pcm.begin(), file.pcm.begin() + 4000);
    filterBy(reverb, expected, 1000);
    filterBy(pan, expected, 1000);
    EXPECT_EQ(pull(stream, 12000), expected);

    std::vector<char> shifted(12001);
    EXPECT_EQ(unaligned.readData(shifted.data() + 1, 12000), 12000);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), shifted.begin() + 1));
}

TEST(SfxAudioStream, makesItsOwnFileWhenGivenNone) {
    SfxAudioStream stream(
        std::make_shared<sfx::SfxDto>(sfx::SfxDto::builder().effectPath("/no/such/file").build()),
        nullptr, nullptr);
    EXPECT_DOUBLE_EQ(stream.duration(), 0.0);
    EXPECT_FALSE(stream.open(QIODevice::ReadOnly));
}

TEST(SfxAudioStream, filtersFloatFilesAsFloat) {
    int argc = 1;
    char name[] = "sfx_stream_tests";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    constexpr std::uint32_t kFrames = 20000; // more than one block of the conversion
    std::vector<float> sound(2 * kFrames);
    for (std::size_t i = 0; i < sound.size(); ++i)
        sound[i] = static_cast<float>(std::sin(static_cast<double>(i) / 40.0));
    const std::uint32_t bytes = kFrames * 8;
    const std::uint32_t rest[] = {16, 3U | 2U << 16, 44100, 44100 * 8, 8U | 32U << 16};
    const std::uint32_t riffBytes = bytes + 36;
    QTemporaryFile wav;
    ASSERT_TRUE(wav.open());
    wav.write("RIFF");
    wav.write(reinterpret_cast<const char*>(&riffBytes), 4);
    wav.write("WAVEfmt ");
    wav.write(reinterpret_cast<const char*>(rest), sizeof rest);
    wav.write("data");
    wav.write(reinterpret_cast<const char*>(&bytes), 4);
    wav.write(reinterpret_cast<const char*>(sound.data()), bytes);
    wav.close();

    UserAudioFile file(QUrl::fromLocalFile(wav.fileName()).toString().toStdString());
    QEventLoop loop;
    QObject::connect(&file, &UserAudioFile::isReady, &loop, &QEventLoop::quit);
    loop.exec();
    ASSERT_EQ(file.Format().sampleFormat(), QAudioFormat::Float);

    PulledStream stream(record(0, 0.0F, 0.25F), &file, nullptr);
    ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
    const auto heard = pull(stream, bytes);
    ASSERT_EQ(heard.size(), bytes);
    for (std::size_t i = 0; i < sound.size(); ++i) {
        float sample = 0.0F;
        std::memcpy(&sample, heard.data() + 4 * i, 4);
        ASSERT_NEAR(sample, sound[i] * (i % 2 == 0 ? 0.75F : 0.25F), 1.6 / 32767.0) << i;
    }
}
