#include "ToolTest.h"

#include <vemo_audio/OggVorbisDecoder.h>

#include "support/Analysis.h"

namespace {

using namespace sfx_test;
using testing::ElementsAre;
using testing::HasSubstr;

Pcm decodeInstalled(const std::filesystem::path& file) {
    std::vector<unsigned char> bytes = Encipher(readFile(file));
    vemo_audio::OggVorbisDecoder decoder(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    const std::vector<unsigned char> raw = decoder.Decode();
    Pcm pcm{static_cast<int>(decoder.SampleRate()), decoder.ChannelCount(), {}};
    for (std::size_t i = 0; i + 1 < raw.size(); i += 2) {
        const auto sample = static_cast<std::int16_t>(raw[i] | raw[i + 1] << 8);
        pcm.samples.push_back(static_cast<float>(sample) / 32768.0F);
    }
    return pcm;
}

class Pack : public ToolTest {};

TEST_F(Pack, packMakesAnInstallThatVerifiesAndLists) {
    writeVorbis("in/b_bell.oga", {.ms = 250, .rate = 44100});
    WriteSoundFile(dir() / "in/door--bell.wav", MakeTone({.ms = 400, .channels = 1}));
    WriteSoundFile(dir() / "in/rain.flac", MakeTone({.ms = 500, .rate = 22050}),
                   SF_FORMAT_FLAC | SF_FORMAT_PCM_24);
    writeText("in/readme.txt", "no audio");
    const Result packed = run({"pack", at("in"), "--out", at("out"), "--ambient", "ra*"});
    ASSERT_EQ(packed.exitCode, 0) << packed.err.toStdString();
    EXPECT_THAT(packed.err.toStdString(), HasSubstr("readme.txt is no audio file"));
    EXPECT_EQ(run({"verify", at("out")}).exitCode, 0);

    const auto listed = parse(run({"list", "--install", at("out"), "--json"}).out);
    std::vector<std::string> rows;
    for (const auto& row : listed.GetArray()) {
        rows.push_back(std::string(row["id"].GetString()) + "|" + row["kind"].GetString() + "|" +
                       row["name"].GetString() + "|" +
                       std::to_string(row["seconds"].GetDouble()).substr(0, 5) + "|" +
                       std::to_string(row["channels"].GetInt()) + "|" +
                       std::to_string(row["rate"].GetInt()));
        EXPECT_TRUE(std::filesystem::exists(pathOf(row["path"].GetString())));
    }
    EXPECT_THAT(rows, ElementsAre("b_bell.sfx|primary|B bell|0.250|2|44100",
                                  "door--bell.sfx|primary|Door bell|0.400|1|48000",
                                  "rain.sfx|ambient|Rain|0.500|2|22050"));
}

TEST_F(Pack, packLeavesVorbisAsItIs) {
    writeVorbis("a.ogg", {.ms = 100});
    ASSERT_EQ(run({"pack", at("a.ogg"), "--out", at("out")}).exitCode, 0);
    EXPECT_EQ(Encipher(readFile(dir() / "out/a.sfx")), readFile(dir() / "a.ogg"));
}

TEST_F(Pack, packEncodesWhateverLibsndfileReads) {
    const Pcm tone = MakeTone({.ms = 600, .frequency = 700});
    const std::map<std::string, int> formats{{"a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT},
                                             {"b.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8},
                                             {"c.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24},
                                             {"d.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                                             {"e.opus", SF_FORMAT_OGG | SF_FORMAT_OPUS},
                                             {"f.au", SF_FORMAT_AU | SF_FORMAT_PCM_16}};
    std::filesystem::create_directory(dir() / "in");
    for (const auto& [name, format] : formats) {
        WriteSoundFile(dir() / "in" / name, tone, format);
    }
    const Result packed = run({"pack", at("in"), "--out", at("out")});
    ASSERT_EQ(packed.exitCode, 0) << packed.err.toStdString();
    for (const auto& [name, format] : formats) {
        SCOPED_TRACE(name);
        const Pcm pcm = decodeInstalled(dir() / "out" / (name.substr(0, 1) + ".sfx"));
        ASSERT_EQ(pcm.channels, 2);
        EXPECT_EQ(pcm.Frames(), tone.Frames());
        const Stretch middle{pcm.Frames() / 4, pcm.Frames() * 3 / 4};
        EXPECT_NEAR(ToneLevel(pcm, 1, middle, 700), 0.5, 0.02);
    }
}

TEST_F(Pack, packTakesIdsAndNamesFromTheTable) {
    writeVorbis("one.ogg", {.ms = 50});
    writeVorbis("two.ogg", {.ms = 50});
    writeText("names.csv", "\xEF\xBB\xBF"
                           "file,id,name\r\n\r\none.ogg,first.sfx,\"Say \"\"one\"\", twice\"\r\n"
                           "two.ogg,second,\r\n");
    const Result packed =
        run({"pack", at("one.ogg"), at("two.ogg"), "--out", at("out"), "--names", at("names.csv")});
    ASSERT_EQ(packed.exitCode, 0) << packed.err.toStdString();
    const auto manifest = parse(QByteArray::fromStdString([&] {
        const auto bytes = readFile(dir() / "out/manifest.json");
        return std::string(bytes.begin(), bytes.end());
    }()));
    const auto& effects = manifest["sfx"];
    EXPECT_STREQ(effects[0]["id"].GetString(), "first.sfx");
    EXPECT_STREQ(effects[0]["name"].GetString(), "Say \"one\", twice");
    EXPECT_STREQ(effects[1]["id"].GetString(), "second.sfx");
    EXPECT_STREQ(effects[1]["name"].GetString(), "Two");
}

TEST_F(Pack, packNamesTheLineOfABadTable) {
    writeVorbis("one.ogg", {.ms = 50});
    const std::map<std::string, std::string> faults{
        {"\none.ogg,a\n", ":2: expected file,id,name but found 2 fields"},
        {"one.ogg,\"a,b\n", ":1: a quoted field is not closed"},
        {"one.ogg,\"a\"b,c\n", ":1: text behind a closing quote"},
        {",a,b\n", ":1: the file field is empty"},
        {"one.ogg,a,b\none.ogg,c,d\n", ":2: 'one.ogg' is named already in line 1"},
        {"file,id,name\nother.ogg,a,b\n", ":2: no source is called 'other.ogg'"}};
    for (const auto& [text, message] : faults) {
        writeText("names.csv", text);
        EXPECT_THAT(run({"pack", at("one.ogg"), "--out", at("out"), "--names", at("names.csv")}),
                    failedWith(2, "names.csv" + message));
    }
}

} // namespace
