#include "ToolTest.h"

namespace {

using namespace sfx_test;
using testing::HasSubstr;

class Usage : public ToolTest {
protected:
    void pack(const std::string& folder) const {
        writeVorbis("bell.ogg", {.ms = 50});
        ASSERT_EQ(run({"pack", at("bell.ogg"), "--out", at(folder)}).exitCode, 0);
    }
    inline static const std::map<QString, QString> NO_SERVER{{"PULSE_SERVER", "unix:/nonexistent"}};
};

TEST_F(Usage, helpAndVersionAnswerZero) {
    const Result help = run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_THAT(help.out.toStdString(), HasSubstr("130  interrupted"));
    EXPECT_THAT(run({"--version"}).out.toStdString(), testing::MatchesRegex("vemo-sfx .+\\..+\n"));
}

TEST_F(Usage, wrongCommandLinesAnswerTwo) {
    EXPECT_THAT(run({}), failedWith(2, "a command is needed"));
    EXPECT_THAT(run({"sing"}), failedWith(2, "sing"));
    EXPECT_THAT(run({"list", "--colour"}), failedWith(2, "--colour"));
    EXPECT_THAT(run({"pack", "a.wav"}), failedWith(2, "--out"));
}

TEST_F(Usage, playRefusesValuesOutOfRange) {
    const std::vector<std::pair<std::string, std::string>> values{
        {"--volume", "1.01"}, {"--volume", "nan"},    {"--volume", "loud"}, {"--pan", "-0.1"},
        {"--reverb", "inf"},  {"--fade-in", "65536"}, {"--fade-in", "-1"},  {"--fade-out", "1e9"},
        {"--repeats", "-2"},  {"--stop-after", "-1"}};
    for (const auto& [option, value] : values) {
        EXPECT_THAT(run({"play", "bell", option, value}),
                    failedWith(2, value + "' is not a number from "));
    }
}

TEST_F(Usage, installIsFoundFromAFolderADataRootAndTheEnvironment) {
    // XDG_DATA_DIRS cannot hold a colon, nor a file name on Windows.
    const std::string root = ON_WINDOWS ? "root 1" : "root:1";
    const std::string install = root + "/vemo_data/sfx";
    pack(install);
    const std::map<QString, QString> elsewhere{{"XDG_DATA_DIRS", "/nonexistent"}};
    for (const std::string& folder : {root, install}) {
        const Result listed = run({"list", "--install", at(folder), "--json"}, elsewhere);
        ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
        EXPECT_EQ(parse(listed.out)[0]["path"].GetString(), at(install + "/bell.sfx"));
    }
    onStage(install);
    std::filesystem::rename(dir() / root, dir() / "root");
    EXPECT_EQ(run({"list"}, {{"XDG_DATA_DIRS", QString::fromStdString(at("root"))}}).exitCode, 0);
}

TEST_F(Usage, missingInstallAnswersThree) {
    EXPECT_THAT(run({"list", "--install", at("none")}), failedWith(3, at("none")));
    if (!ON_WINDOWS) { // where there is one place, which another test program may have
        EXPECT_THAT(run({"list"}, {{"XDG_DATA_DIRS", QString::fromStdString(at("none"))}}),
                    failedWith(3, at("none/vemo_data/sfx")));
    }
    pack("out");
    std::filesystem::remove(dir() / "out/bell.sfx");
    EXPECT_THAT(run({"play", "bell", "--install", at("out")}), failedWith(3, "Missing: bell.sfx"));
}

TEST_F(Usage, listPointsAtAnEffectThatDoesNotDecode) {
    pack("out");
    writeText("out/bell.sfx", "text");
    const Result listed = run({"list", "--install", at("out"), "--json"});
    EXPECT_THAT(listed, failedWith(1, at("out/bell.sfx")));
    EXPECT_TRUE(parse(listed.out)[0]["seconds"].IsNull());
}

TEST_F(Usage, unknownEffectAnswersFour) {
    pack("out");
    EXPECT_THAT(run({"play", "bell", "gong", "--install", at("out")}), failedWith(4, "'gong'"));
}

TEST_F(Usage, noAudioServerAnswersFive) {
    pack("out");
    EXPECT_THAT(run({"devices"}, NO_SERVER), failedWith(5, "no audio output device"));
    EXPECT_THAT(run({"play", "bell", "--install", at("out")}, NO_SERVER),
                failedWith(5, "no audio output device"));
}

} // namespace
