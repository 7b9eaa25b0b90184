#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <sfx/source/SfxPanFilter.h>
#include <sfx/source/SfxReverbFilter.h>

using namespace vemo::audio;

namespace {

using Samples = std::vector<std::int16_t>;

std::shared_ptr<sfx::SfxDto> recordWith(float reverb, float pan) {
    return std::make_shared<sfx::SfxDto>(sfx::SfxDto::builder().reverb(reverb).pan(pan).build());
}

// One sample in three is at full scale, where the limiter of the reverb jumps.
Samples loudNoise(std::size_t count, unsigned int seed) {
    constexpr std::int16_t kExtremes[] = {32767, -32768, -32767, 0};
    std::mt19937 random(seed);
    Samples samples(count);
    for (auto& sample : samples) {
        const auto draw = random();
        sample = draw % 3 == 0 ? kExtremes[(draw >> 8) % 4] : static_cast<std::int16_t>(draw >> 16);
    }
    return samples;
}

std::int16_t low16(float value) {
    const bool fits = value >= -2147483648.0F && value < 2147483648.0F;
    return static_cast<std::int16_t>(fits ? static_cast<std::int32_t>(value) : INT32_MIN);
}

// One sample at a time, as it is defined; what the vectorised filter must give bit by bit.
struct PlainReverb {
    float mix;
    std::deque<std::int16_t> delay = {};

    void apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) {
        delay.resize(std::size_t{channels} * 5512);
        std::size_t p = 0;
        for (std::int64_t f = 0; f < frames; ++f) {
            for (unsigned int c = 0; c < channels; ++c, ++samples) {
                const float x = delay[p + c] / 32767.0F * 0.5F;
                const float size = std::fabs(x);
                const float wet =
                    size < 0.5F ? x : (1.0F - std::exp(-2.0F * (size - 0.5F))) * (size / x);
                float ramp = 1.0F;
                if (f < 441 || f > frames - 441)
                    ramp = static_cast<float>(f < 441 ? f : frames - f) / 441.0F;
                *samples = low16((wet * ramp * mix + *samples / 32767.0F) * 32767.0F);
                delay[p + c] = *samples;
            }
            p = (p + channels) % delay.size();
        }
    }
};

} // namespace

TEST(SfxReverbFilter, matchesThePlainFormulaOnAnyChunk) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float mix : {0.3F, 1.0F, 70.0F, 1e6F, -2.0F, nan, 2e38F}) {
        SfxReverbFilter filter(recordWith(mix, 0.5F), nullptr);
        PlainReverb plain{mix};
        unsigned int seed = 1;
        // Where the channel count changes, the delay line shrinks or grows.
        for (const unsigned int channels : {2U, 1U, 6U, 2U}) {
            for (const int frames : {1,    440,  441,  5512, 442,  881,  882,  883,   884, 5511,
                                     5513, 1024, 1025, 1026, 1027, 1028, 5600, 12000, 100, 4096}) {
                Samples expected = loudNoise(std::size_t{channels} * frames, ++seed);
                Samples samples = expected;
                plain.apply(expected.data(), frames, channels);
                filter.apply(samples.data(), frames, channels);
                ASSERT_EQ(samples, expected) << mix << " " << channels << " x " << frames;
            }
        }
    }
}

TEST(SfxReverbFilter, leavesTheFirstChunkAsItIs) {
    for (int start = -32768; start < 32768; start += 4096) {
        Samples samples(4096);
        for (int i = 0; i < 4096; ++i)
            samples[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(start + i);
        const Samples before = samples;
        SfxReverbFilter(recordWith(1.0F, 0.5F), nullptr).apply(samples.data(), 2048, 2);
        ASSERT_EQ(samples, before);
    }
}

TEST(SfxReverbFilter, wrapsAroundWhenLoudAndMutesFullScale) {
    SfxReverbFilter filter(recordWith(1.0F, 0.5F), nullptr);
    Samples first(1000, 30000);
    first[510] = 32767;
    first[520] = -32768;
    Samples second(1000, 30000);
    filter.apply(first.data(), 1000, 1);
    filter.apply(second.data(), 1000, 1);
    EXPECT_EQ(second[0], 30000);
    EXPECT_EQ(second[500], 45000 - 65536);
    EXPECT_EQ(second[510], 30000);
    EXPECT_NEAR(second[520], 30000, 1);
}

TEST(SfxPanFilter, scalesFirstChannelAgainstAllOthers) {
    for (const float pan : {0.0F, 0.25F, 1.0F, 2.0F, -3.5F}) {
        SfxPanFilter filter(recordWith(0.0F, pan), nullptr);
        for (const unsigned int channels : {1U, 2U, 5U, 6U}) {
            const Samples before = loudNoise(std::size_t{channels} * 1027, channels);
            Samples samples = before;
            filter.apply(samples.data(), 1027, channels);
            for (std::size_t i = 0; i < samples.size(); ++i) {
                const float value = before[i] * (i % channels == 0 ? 1.0F - pan : pan);
                ASSERT_EQ(samples[i], low16(std::clamp(value, -32768.0F, 32767.0F)))
                    << pan << " " << channels << " at " << i;
            }
        }
    }
    Samples samples = {32767, -32767};
    SfxPanFilter(recordWith(0.0F, 0.25F), nullptr).apply(samples.data(), 1, 2);
    EXPECT_EQ(samples, (Samples{24575, -8191}));
}

TEST(Filters, applyDoesNothingWithoutFramesOrChannels) {
    SfxPanFilter pan(recordWith(0.0F, 0.0F), nullptr);
    SfxReverbFilter reverb(recordWith(1.0F, 0.5F), nullptr);
    Samples samples = {1000, 1000};
    for (SfxAudioFilterInterface* filter : {static_cast<SfxAudioFilterInterface*>(&pan),
                                            static_cast<SfxAudioFilterInterface*>(&reverb)}) {
        filter->apply(samples.data(), 0, 2);
        filter->apply(samples.data(), -1, 2);
        filter->apply(samples.data(), 1, 0);
        EXPECT_EQ(samples, (Samples{1000, 1000}));
    }
}
