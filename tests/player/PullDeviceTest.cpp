#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <sfx/player/PullDevice.h>
#include <sfx/source/SfxAudioStream.h>
#include <support/FakeFile.h>

using vemo::audio::PullDevice;
using vemo::audio::SfxAudioStream;
using vemo::audio::sfx::SfxDto;

namespace {

constexpr std::int64_t Tail = 1000;

// A record's stream over `ms` of tone, with the device in front of it.
struct Line {
    explicit Line(double ms, int repeats = 0, float pan = 0.5F, int channels = 2)
        : file(sfx_test::MakeTone({.ms = ms, .channels = channels})),
          stream(std::make_shared<SfxDto>(SfxDto::builder().repeats(repeats).pan(pan).build()),
                 &file, nullptr) {
        stream.open(QIODevice::ReadOnly);
        QAudioFormat format;
        format.setSampleRate(48000);
        format.setChannelCount(channels);
        format.setSampleFormat(QAudioFormat::Int16);
        const auto [first, last] = file.Read();
        device = std::make_unique<PullDevice>(stream, format, (last - first) * (repeats + 1));
        device->SetTail(Tail);
    }

    // Reads to the end in pieces, checking on the way that no more is promised than comes.
    std::vector<char> ReadAll(qint64 piece) {
        std::vector<char> all;
        std::vector<char> buffer(static_cast<std::size_t>(piece));
        for (;;) {
            const qint64 promised = device->bytesAvailable();
            const qint64 got = device->read(buffer.data(), piece);
            EXPECT_EQ(got, std::min(piece, promised));
            EXPECT_EQ(device->atEnd(), got == promised);
            if (got <= 0)
                return all;
            all.insert(all.end(), buffer.begin(), buffer.begin() + got);
        }
    }

    sfx_test::FakeFile file;
    SfxAudioStream stream;
    std::unique_ptr<PullDevice> device;
};

} // namespace

TEST(PullDevice, servesEveryByteThenSilenceThenNothing) {
    for (const qint64 piece : {960, 3840, 16384, 40000}) {
        for (const int repeats : {0, 1, 7}) {
            Line line(10, repeats);
            const auto all = line.ReadAll(piece);
            const auto [first, last] = line.file.Read();
            const auto pass = static_cast<std::size_t>(last - first);
            const std::size_t sound = pass * static_cast<std::size_t>(repeats + 1);
            ASSERT_EQ(all.size(), sound + Tail);
            for (std::size_t i = 0; i < sound; ++i)
                ASSERT_EQ(all[i], first[i % pass]);
            for (std::size_t i = sound; i < all.size(); ++i)
                ASSERT_EQ(all[i], 0);
            EXPECT_EQ(line.device->BytesRead(), static_cast<std::int64_t>(all.size()));
        }
    }
}

TEST(PullDevice, neverTearsAFrameSoEveryChannelKeepsItsGain) {
    Line line(500, 0, 1.0F, 6);
    const auto all = line.ReadAll(960);
    const auto* samples = reinterpret_cast<const std::int16_t*>(all.data());
    const auto [first, last] = line.file.Read();
    const auto* original = reinterpret_cast<const std::int16_t*>(first);
    for (std::ptrdiff_t i = 0; i < (last - first) / 2; ++i)
        ASSERT_EQ(samples[i], i % 6 == 0 ? 0 : original[i]) << i;
}

TEST(PullDevice, endsWithTheTailWhenTheStreamIsEnded) {
    Line line(500);
    std::vector<char> buffer(4000);
    ASSERT_EQ(line.device->read(buffer.data(), 4000), 4000);
    line.device->EndStream();
    EXPECT_EQ(line.device->bytesAvailable(), Tail);
    EXPECT_EQ(line.ReadAll(300), std::vector<char>(Tail, 0));
}

TEST(PullDevice, leavesTheStreamAloneOnceDetached) {
    Line line(500);
    line.device->Detach();
    char byte = 0;
    EXPECT_EQ(line.device->read(&byte, 1), 0);
    EXPECT_EQ(line.device->bytesAvailable(), 0);
    EXPECT_TRUE(line.device->atEnd());
    EXPECT_GT(line.stream.bytesAvailable(), 0);
}
