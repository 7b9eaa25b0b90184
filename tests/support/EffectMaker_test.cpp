#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <vorbis/vorbisfile.h>

#include "support/Analysis.h"
#include "support/EffectMaker.h"
#include "support/FakeFile.h"
#include "support/SoundFile.h"

using namespace sfx_test;

namespace {

std::vector<unsigned char> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

struct Memory {
    const std::vector<unsigned char>& bytes;
    std::size_t at = 0;
};

std::size_t ReadMemory(void* out, std::size_t size, std::size_t count, void* source) {
    auto& memory = *static_cast<Memory*>(source);
    const std::size_t got = std::min(size * count, memory.bytes.size() - memory.at);
    std::memcpy(out, memory.bytes.data() + memory.at, got);
    memory.at += got;
    return got / size;
}

Pcm Decode(const std::vector<unsigned char>& bytes) {
    Memory memory{bytes};
    OggVorbis_File file;
    Pcm pcm;
    if (ov_open_callbacks(&memory, &file, nullptr, 0, {ReadMemory, nullptr, nullptr, nullptr}) !=
        0) {
        ADD_FAILURE() << "not an Ogg Vorbis stream";
        return pcm;
    }
    pcm.rate = static_cast<int>(ov_info(&file, -1)->rate);
    pcm.channels = ov_info(&file, -1)->channels;
    float** planes = nullptr;
    for (long frames = 0; (frames = ov_read_float(&file, &planes, 4096, nullptr)) > 0;) {
        for (long i = 0; i < frames; ++i) {
            for (int channel = 0; channel < pcm.channels; ++channel) {
                pcm.samples.push_back(planes[channel][i]);
            }
        }
    }
    ov_clear(&file);
    return pcm;
}

} // namespace

TEST(EffectMaker, encodeVorbisKeepsTheExactLength) {
    for (const int frames : {0, 1, 63, 64, 65, 441, 1024, 2205, 44100, 100001}) {
        for (const int channels : {1, 2}) {
            Pcm pcm{44100, channels, {}};
            pcm.samples.resize(static_cast<std::size_t>(frames) *
                               static_cast<std::size_t>(channels));
            const Pcm decoded = Decode(EncodeVorbis(pcm));
            EXPECT_EQ(decoded.Frames(), pcm.Frames()) << channels << " channels";
            EXPECT_EQ(decoded.channels, channels);
            EXPECT_EQ(decoded.rate, 44100);
        }
    }
}

TEST(EffectMaker, encodeVorbisKeepsTheTone) {
    const Pcm pcm = MakeTone({.ms = 300, .frequency = 700, .level = 0.4, .rate = 22050});
    const Pcm decoded = Decode(EncodeVorbis(pcm));
    EXPECT_NEAR(Frequency(decoded, 1, Whole(decoded)), 700, 1);
    EXPECT_NEAR(Rms(decoded, 1, Whole(decoded)), 0.4 / std::sqrt(2), 0.01);
}

TEST(EffectMaker, encodeVorbisRefusesAFormatOfNoUse) {
    EXPECT_THROW(EncodeVorbis({-1, 2, {}}), std::runtime_error);
}

TEST(InstallFolder, publishMakesItTheFirstSharedDataFolder) {
    const QByteArray before = qgetenv("XDG_DATA_DIRS");
    const Pcm tone = MakeTone({.ms = 50});
    {
        InstallFolder folder;
        const std::string path = folder.AddEffect("bell", "Bell", tone);
        folder.AddAmbient("rain", "Rain", tone);
        folder.Publish();

        const auto locations =
            QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
        ASSERT_GE(locations.size(), 2);
        EXPECT_EQ(locations[1].toStdString() + "/vemo_data/sfx", folder.Path().generic_string());

        EXPECT_EQ(Decode(Encipher(ReadBytes(path))).Frames(), tone.Frames());
        const auto text = ReadBytes((folder.Path() / "manifest.json").string());
        const auto manifest = QJsonDocument::fromJson({reinterpret_cast<const char*>(text.data()),
                                                       static_cast<qsizetype>(text.size())})
                                  .object();
        EXPECT_EQ(manifest["metadata"]["version"].toString(), "1.1");
        EXPECT_EQ(manifest["metadata"]["count"].toInt(), 1);
        EXPECT_EQ(manifest["ambient"][0]["name"].toString(), "Rain");
        EXPECT_EQ(folder.Path() / manifest["sfx"][0]["path"].toString().toStdString(), path);
    }
    EXPECT_EQ(qgetenv("XDG_DATA_DIRS"), before);
}

TEST(SoundFile, writesWhatTheFormatSays) {
    const QTemporaryDir dir;
    const Pcm tone = MakeTone({.ms = 100, .rate = 44100, .channels = 1});
    const int formats[] = {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_WAV | SF_FORMAT_FLOAT,
                           SF_FORMAT_FLAC | SF_FORMAT_PCM_24};
    for (const int format : formats) {
        const std::string path = dir.filePath("tone").toStdString();
        WriteSoundFile(path, tone, format);
        SF_INFO info{};
        SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
        ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
        EXPECT_EQ(info.format, format);
        EXPECT_EQ(info.frames, 4410);
        EXPECT_EQ(info.channels, 1);
        EXPECT_EQ(info.samplerate, 44100);
        sf_close(file);
    }
    EXPECT_THROW(WriteSoundFile("/nonexistent/tone.wav", tone), std::runtime_error);
}

TEST(FakeFile, isEmptyUntilItIsReady) {
    using Stage = vemo::audio::DecodeState::Stage;
    FakeFile file(MakeTone({.ms = 1000, .rate = 44100}), Stage::Decoding);
    EXPECT_EQ(file.Read().first, file.Read().second);
    EXPECT_EQ(file.ChannelCount(), 0U);
    EXPECT_EQ(file.SampleRate(), 0);
    EXPECT_EQ(file.Duration(), 0);

    file.SetStage(Stage::Ready);
    const auto [begin, end] = file.Read();
    EXPECT_EQ(end - begin, 44100 * 4);
    EXPECT_EQ(file.ChannelCount(), 2U);
    EXPECT_EQ(file.SampleRate(), 44100);
    EXPECT_EQ(file.Duration(), 2);
}
