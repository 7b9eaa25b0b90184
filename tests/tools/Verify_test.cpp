#include "ToolTest.h"

namespace {

using namespace sfx_test;
using testing::HasSubstr;

class Verify : public ToolTest {
protected:
    void SetUp() override {
        // Long enough for several pages.
        writeVorbis("bell.ogg", {.ms = 4000});
        writeVorbis("rain.ogg", {.ms = 300});
        ASSERT_EQ(
            run({"pack", at("bell.ogg"), at("rain.ogg"), "--out", at("out"), "--ambient", "rain*"})
                .exitCode,
            0);
    }

    void writeManifest(const std::string& metadata, const std::string& effects) const {
        writeText("out/manifest.json",
                  R"({"metadata":{)" + metadata + R"(},"sfx":[)" + effects + R"(],"ambient":[]})");
    }
    /// One fault, and both reports name it.
    void expectFault(const std::string& file, const std::string& text) const {
        const Result plain = run({"verify", at("out")});
        EXPECT_EQ(plain.exitCode, 1);
        EXPECT_THAT(plain.out.toStdString(), HasSubstr("fault: " + file + ": " + text));
        const Result json = run({"verify", at("out"), "--json"});
        EXPECT_EQ(json.exitCode, 1);
        const auto report = parse(json.out);
        ASSERT_EQ(report["faults"].Size(), 1U) << json.out.toStdString();
        EXPECT_EQ(report["faults"][0]["file"].GetString(), file);
        EXPECT_THAT(report["faults"][0]["text"].GetString(), HasSubstr(text));
    }
};

TEST_F(Verify, verifyFindsAFlippedByteAnywhere) {
    const auto sound = readFile(dir() / "out/bell.sfx");
    for (std::size_t i = 0; i < 24; ++i) {
        SCOPED_TRACE(i);
        auto flipped = sound;
        flipped[i * (sound.size() - 1) / 23] ^= 0x04;
        WriteBytes(dir() / "out/bell.sfx", flipped);
        EXPECT_EQ(run({"verify", at("out")}).exitCode, 1);
    }
    expectFault("bell.sfx", "damaged");
}

TEST_F(Verify, verifyFindsACutAnywhere) {
    const auto sound = readFile(dir() / "out/bell.sfx");
    for (const std::size_t size :
         {sound.size() - 1, sound.size() / 2, std::size_t{30}, std::size_t{1}}) {
        SCOPED_TRACE(size);
        WriteBytes(dir() / "out/bell.sfx",
                   {sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(size)});
        expectFault("bell.sfx", "");
    }
}

TEST_F(Verify, verifyFindsFilesThatAreNoEffects) {
    WriteBytes(dir() / "out/bell.sfx", {});
    expectFault("bell.sfx", "empty");
    writeText("out/bell.sfx", "text");
    expectFault("bell.sfx", "not Ogg Vorbis");
    WriteBytes(dir() / "out/bell.sfx", readFile(dir() / "bell.ogg")); // not enciphered
    expectFault("bell.sfx", "not Ogg Vorbis");
    std::filesystem::remove(dir() / "out/bell.sfx");
    expectFault("bell.sfx", "missing");
    std::filesystem::create_directory(dir() / "out/bell.sfx");
    expectFault("bell.sfx", "cannot be read");
}

TEST_F(Verify, verifyFindsAManifestThatDoesNotAddUp) {
    const std::string metadata = R"("version":"1.1","count":1,"ambientCount":0)";
    const std::string bell = R"({"id":"bell.sfx","name":"Bell","path":"bell.sfx"})";
    writeManifest(R"("version":"1.1","count":7,"ambientCount":0)", bell);
    expectFault("manifest.json", "\"count\" is 7 but 1 are listed");
    writeManifest(R"("version":"1.1","count":2,"ambientCount":0)", bell + "," + bell);
    expectFault("bell.sfx", "the id 'bell.sfx' is listed twice");
    writeManifest(metadata, R"({"id":"bell.sfx","name":"Bell","path":"../bell.ogg"})");
    expectFault("../bell.ogg", "leads out of the install folder");
}

TEST_F(Verify, verifyNotesFilesThatAreNotListed) {
    writeText("out/more/extra.sfx", "x");
    const auto report = parse(run({"verify", at("out"), "--json"}).out);
    EXPECT_EQ(report["effects"].GetInt(), 2);
    EXPECT_EQ(report["faults"].Size(), 0U);
    ASSERT_EQ(report["notes"].Size(), 1U);
    EXPECT_STREQ(report["notes"][0]["file"].GetString(), "more/extra.sfx");
}

TEST_F(Verify, verifyRefusesAManifestThatCannotBeUsed) {
    const std::map<std::string, std::string> faults{
        {"{", "is not JSON"},
        {"[]", "is not a JSON object"},
        {"{}", "no \"metadata\""},
        {R"({"metadata":{"count":"1"}})", "\"count\" of \"metadata\" is not a whole number"},
        {R"({"metadata":{"count":0,"ambientCount":0},"sfx":[{"id":1}],"ambient":[]})",
         "\"id\" of effect 1 of \"sfx\" is not a string"},
        {R"({"metadata":{"version":"2.0","count":0,"ambientCount":0},"sfx":[],"ambient":[]})",
         "Unsupported sfx manifest version"}};
    for (const auto& [text, message] : faults) {
        writeText("out/manifest.json", text);
        EXPECT_THAT(run({"verify", at("out")}), failedWith(3, message));
    }
}

} // namespace
