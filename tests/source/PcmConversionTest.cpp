#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include <sfx/source/PcmConversion.h>

using namespace vemo::audio;

TEST(PcmConversion, returnsEvery16BitSample) {
    std::vector<std::int16_t> every(65536);
    for (int i = 0; i < 65536; ++i)
        every[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i - 32768);
    for (const auto format : {QAudioFormat::Int16, QAudioFormat::Int32, QAudioFormat::Float}) {
        std::vector<char> pcm(every.size() * 4 + 1);
        std::vector<std::int16_t> back(every.size());
        fromInt16(every.data(), format, pcm.data() + 1, every.size());
        toInt16(pcm.data() + 1, format, back.data(), back.size());
        EXPECT_EQ(back, every) << format;
    }
}

TEST(PcmConversion, returnsEvery8BitSample) {
    for (int value = 0; value < 256; ++value) {
        const char before = static_cast<char>(value);
        std::int16_t sample = 0;
        char after = 0;
        toInt16(&before, QAudioFormat::UInt8, &sample, 1);
        fromInt16(&sample, QAudioFormat::UInt8, &after, 1);
        EXPECT_EQ(sample, (value - 128) * 256);
        EXPECT_EQ(after, before);
    }
    const std::int16_t loudest = 32767;
    char limited = 0;
    fromInt16(&loudest, QAudioFormat::UInt8, &limited, 1);
    EXPECT_EQ(static_cast<unsigned char>(limited), 255);
}

TEST(PcmConversion, roundsAndLimits) {
    const float floats[] = {1.0F, -1.0F, 2.0F, -HUGE_VALF, NAN, 1.4F / 32767.0F, -1.6F / 32767.0F};
    std::vector<std::int16_t> samples(std::size(floats));
    toInt16(reinterpret_cast<const char*>(floats), QAudioFormat::Float, samples.data(),
            samples.size());
    EXPECT_EQ(samples, (std::vector<std::int16_t>{32767, -32767, 32767, -32768, 0, 1, -2}));

    const std::int32_t ints[] = {INT32_MAX, INT32_MIN, 0x17FFF, -0x8001};
    samples.resize(std::size(ints));
    toInt16(reinterpret_cast<const char*>(ints), QAudioFormat::Int32, samples.data(),
            samples.size());
    EXPECT_EQ(samples, (std::vector<std::int16_t>{32767, -32768, 1, -1}));
}
