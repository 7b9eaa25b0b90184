#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include <sfx/player/PullDevice.h>
#include <sfx/source/SfxAudioStream.h>
#include <support/FakeFile.h>
#include <support/PullPathTrap.h>

using namespace vemo::audio;
using sfx::SfxDto;
using sfx_test::PullPathTrap;

// The sink's thread must not wait for anybody: not for the allocator, not for a lock, not for the
// system. The first read may allocate, the delay line for one.
TEST(PullPath, neitherLocksNorAllocatesAfterTheFirstRead) {
    if (!PullPathTrap::Available())
        GTEST_SKIP() << PullPathTrap::kUnavailable;
    for (const int channels : {1, 2, 6}) {
        sfx_test::FakeFile file(sfx_test::MakeTone({.ms = 300, .channels = channels}));
        SfxAudioStream stream(
            std::make_shared<SfxDto>(SfxDto::builder().reverb(0.5F).pan(0.2F).repeats(3).build()),
            &file, nullptr);
        ASSERT_TRUE(stream.open(QIODevice::ReadOnly));
        QAudioFormat format;
        format.setSampleRate(48000);
        format.setChannelCount(channels);
        format.setSampleFormat(QAudioFormat::Int16);
        PullDevice device(stream, format, (file.Read().second - file.Read().first) * 4);
        const qint64 piece = qint64{960} * 2 * channels;
        std::vector<char> buffer(static_cast<std::size_t>(piece));
        ASSERT_EQ(device.read(buffer.data(), piece), piece);

        qint64 total = piece;
        PullPathTrap trap;
        while (!device.atEnd())
            total += device.read(buffer.data(), piece);
        trap.Disarm();
        EXPECT_EQ(trap.Count(), 0) << trap.Report();
        EXPECT_EQ(total, device.BytesRead());
    }
}
