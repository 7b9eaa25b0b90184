#include <cmath>
#include <cstring>
#include <stdexcept>

#include <gtest/gtest.h>

#include <support/EffectMaker.h>
#include <vemo_audio/OggVorbisDecoder.h>

using sfx_test::EncodeVorbis;
using sfx_test::MakeTone;
using vemo_audio::OggVorbisDecoder;

namespace {

using Bytes = std::vector<unsigned char>;

OggVorbisDecoder Over(Bytes& bytes) {
    return {bytes.data(), static_cast<std::int64_t>(bytes.size())};
}

} // namespace

TEST(OggVorbisDecoder, givesEverySampleOfTheStream) {
    for (const int channels : {1, 2, 6}) {
        const auto tone =
            MakeTone({.ms = 123, .frequency = 440, .rate = 22050, .channels = channels});
        Bytes bytes = EncodeVorbis(tone);
        auto decoder = Over(bytes);
        EXPECT_EQ(decoder.SampleRate(), 0U);
        const auto pcm = decoder.Decode();
        EXPECT_EQ(decoder.ChannelCount(), channels);
        EXPECT_EQ(decoder.SampleRate(), 22050U);
        EXPECT_FALSE(decoder.Damaged());
        ASSERT_EQ(pcm.size(), tone.samples.size() * 2);
        double error = 0;
        for (std::size_t i = 0; i < tone.samples.size(); ++i) {
            std::int16_t sample = 0;
            std::memcpy(&sample, pcm.data() + 2 * i, 2);
            error += std::pow(sample / 32767.0 - static_cast<double>(tone.samples[i]), 2);
        }
        EXPECT_LT(std::sqrt(error / static_cast<double>(tone.samples.size())), 0.05);
    }
}

TEST(OggVorbisDecoder, refusesWhatIsNoVorbisStream) {
    Bytes nothing;
    Bytes text(5000, 'x');
    Bytes headerOnly = EncodeVorbis(MakeTone({.ms = 500}));
    headerOnly.resize(60);
    for (Bytes* bytes : {&nothing, &text, &headerOnly}) {
        try {
            Over(*bytes).Decode();
            ADD_FAILURE() << "decoded " << bytes->size() << " bytes";
        } catch (const std::runtime_error& fault) {
            EXPECT_STREQ(fault.what(), "not an Ogg Vorbis stream");
        }
    }
}

TEST(OggVorbisDecoder, playsWhatIsLeftOfADamagedStreamAndSaysSo) {
    const Bytes whole = EncodeVorbis(MakeTone({.ms = 5000}));
    Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() * 2 / 3));
    Bytes broken = whole;
    std::fill_n(broken.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2), 300, 0);
    for (Bytes* bytes : {&cut, &broken}) {
        auto decoder = Over(*bytes);
        const auto pcm = decoder.Decode();
        EXPECT_TRUE(decoder.Damaged());
        EXPECT_GT(pcm.size(), 48000U * 4);
        EXPECT_LT(pcm.size(), 48000U * 4 * 5);
    }
}
