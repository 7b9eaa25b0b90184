#include <cmath>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include <sfx/source/PcmConversion.h>

using namespace vemo::audio;

namespace {

template <typename Sample>
std::vector<std::int16_t> as16(std::vector<Sample> pcm, QAudioFormat::SampleFormat format) {
    std::vector<std::int16_t> samples(pcm.size());
    toInt16(reinterpret_cast<const char*>(pcm.data()), format, samples.data(), samples.size());
    return samples;
}

} // namespace

TEST(PcmConversion, returnsEvery16BitSampleAtAnyAddress) {
    std::vector<std::int16_t> every(65536);
    for (std::size_t i = 0; i < every.size(); ++i)
        every[i] = static_cast<std::int16_t>(i);
    for (const auto format : {QAudioFormat::Int16, QAudioFormat::Int32, QAudioFormat::Float}) {
        std::vector<char> pcm(every.size() * 4 + 1);
        std::vector<std::int16_t> back(every.size());
        fromInt16(every.data(), format, pcm.data() + 1, every.size());
        toInt16(pcm.data() + 1, format, back.data(), back.size());
        EXPECT_EQ(back, every) << format;
    }
}

TEST(PcmConversion, roundsAndLimits) {
    using Int16s = std::vector<std::int16_t>;
    EXPECT_EQ(as16<float>({1, -1, 2, -HUGE_VALF, NAN, 1.4F / 32767}, QAudioFormat::Float),
              (Int16s{32767, -32767, 32767, -32768, 0, 1}));
    EXPECT_EQ(as16<std::int32_t>({INT32_MAX, INT32_MIN, 0x17FFF, -0x8001}, QAudioFormat::Int32),
              (Int16s{32767, -32768, 1, -1}));
    EXPECT_EQ(as16<std::uint8_t>({0, 128, 255}, QAudioFormat::UInt8), (Int16s{-32768, 0, 32512}));
    const Int16s samples = {32767, 32512, 127, -128, -32768};
    std::vector<std::uint8_t> bytes(samples.size());
    fromInt16(samples.data(), QAudioFormat::UInt8, reinterpret_cast<char*>(bytes.data()), 5);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{255, 255, 128, 128, 0}));
}
