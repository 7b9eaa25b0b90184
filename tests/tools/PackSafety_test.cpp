#include "ToolTest.h"

#include <csignal>
#include <limits>

namespace {

using namespace sfx_test;

class PackSafety : public ToolTest {
protected:
    /// Runs a pack that must fail and checks that the folder is what it was.
    void expectRefused(const std::vector<std::string>& arguments, int code,
                       const std::string& text) {
        const auto before = contentOf(dir());
        EXPECT_THAT(run(arguments), failedWith(code, text));
        EXPECT_EQ(contentOf(dir()), before);
    }
};

TEST_F(PackSafety, packRefusesTwoSourcesWithOneId) {
    writeVorbis("in/bell.ogg", {.ms = 50});
    writeVorbis("in/deep/Bell.oga", {.ms = 50});
    expectRefused({"pack", at("in"), at("in/deep"), "--out", at("out")}, 1,
                  at("in/bell.ogg") + " and " + at("in/deep/Bell.oga"));
}

TEST_F(PackSafety, packRefusesWhatDoesNotDecode) {
    const std::vector<unsigned char> sound = EncodeVorbis(MakeTone({.ms = 300}));
    std::vector<unsigned char> flipped = sound;
    flipped[flipped.size() / 2] ^= 0x10;
    WriteBytes(dir() / "flipped.ogg", flipped);
    WriteBytes(dir() / "cut.ogg", {sound.begin(), sound.end() - 40});
    WriteBytes(dir() / "empty.wav", {});
    writeText("text.wav", "RIFF or not, this is text");
    WriteSoundFile(dir() / "silent.wav", MakeTone({.ms = 0}));
    Pcm broken = MakeTone({.ms = 10});
    broken.samples[100] = std::numeric_limits<float>::quiet_NaN();
    WriteSoundFile(dir() / "nan.wav", broken, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    writeVorbis("good.ogg", {.ms = 50});

    for (const std::string name :
         {"flipped.ogg", "cut.ogg", "empty.wav", "text.wav", "silent.wav", "nan.wav", "none.wav"}) {
        expectRefused({"pack", at("good.ogg"), at(name), "--out", at("new/parents/out")}, 1,
                      at(name));
    }
}

TEST_F(PackSafety, packRefusesIdsThatAreNoFileNames) {
    writeVorbis(".what.ogg", {.ms = 50});
    expectRefused({"pack", at(".what.ogg"), "--out", at("out")}, 1,
                  "'.what.sfx' cannot be an effect id");
    for (const std::string id : {"what?", "../../up"}) {
        writeText("names.csv", ".what.ogg," + id + ",Up\n");
        expectRefused({"pack", at(".what.ogg"), "--out", at("out"), "--names", at("names.csv")}, 1,
                      "'" + id + ".sfx' cannot be an effect id");
    }
}

TEST_F(PackSafety, packRefusesGlobsThatFitNothing) {
    writeVorbis("a.ogg", {.ms = 50});
    expectRefused({"pack", at("a.ogg"), "--out", at("out"), "--ambient", "rain*"}, 2, "'rain*'");
}

TEST_F(PackSafety, packReplacesAnInstallOnlyWithForceAndOnlyWhenItSucceeds) {
    writeVorbis("a.ogg", {.ms = 50});
    writeText("bad.ogg", "bad");
    ASSERT_EQ(run({"pack", at("a.ogg"), "--out", at("out")}).exitCode, 0);
    expectRefused({"pack", at("a.ogg"), "--out", at("out")}, 1, "--force");
    expectRefused({"pack", at("a.ogg"), at("bad.ogg"), "--out", at("out"), "--force"}, 1,
                  "bad.ogg");

    std::filesystem::rename(dir() / "a.ogg", dir() / "b.ogg");
    ASSERT_EQ(run({"pack", at("b.ogg"), "--out", at("out"), "--force"}).exitCode, 0);
    const auto content = contentOf(dir());
    EXPECT_TRUE(content.contains("out/b.sfx"));
    EXPECT_FALSE(content.contains("out/a.sfx"));
    EXPECT_EQ(content.size(), 5U) << "b.ogg, bad.ogg, out and its two files";
}

TEST_F(PackSafety, packNeverReplacesWhatIsNoInstall) {
    writeVorbis("a.ogg", {.ms = 50});
    writeText("home/letter.txt", "dear");
    expectRefused({"pack", at("a.ogg"), "--out", at("home"), "--force"}, 1, "no install");
    expectRefused({"pack", at("a.ogg"), "--out", at("home/letter.txt"), "--force"}, 1,
                  "not a folder");
}

TEST_F(PackSafety, packLeavesNothingWhenInterrupted) {
    writeVorbis("a.ogg", {.ms = 50});
    // Takes seconds to encode.
    WriteSoundFile(dir() / "b.wav", MakeTone({.ms = 120'000}));
    const auto before = contentOf(dir());
    ProcessRunner tool(toolPath(), list({"pack", at("a.ogg"), at("b.wav"), "--out", at("out")}));
    ASSERT_TRUE(tool.WaitForOutput("a.sfx"));
    tool.SendSignal(SIGTERM);
    EXPECT_THAT(tool.Finish(), failedWith(130, "interrupted"));
    EXPECT_EQ(contentOf(dir()), before);
}

} // namespace
