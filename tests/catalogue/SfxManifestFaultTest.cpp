#include <filesystem>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sfx/catalogue/SfxManifest.h>

#include "BareInstall.h"

namespace {

using testing::HasSubstr;

// What the catalogue says to the manifest in `install`; empty if it loads.
template <typename Exception = std::runtime_error>
std::string Fault() {
    try {
        const vemo::sfx::SfxManifest manifest;
        return {};
    } catch (const Exception& error) {
        return error.what();
    }
}

std::string FaultOf(const std::string& json) {
    const BareInstall install;
    install.Write(u8"a.sfx");
    install.WriteManifest(json);
    return Fault();
}

std::string WithMetadata(const std::string& metadata, const std::string& lists = R"(
        "sfx": [], "ambient": [])") {
    return R"({"metadata": )" + metadata + "," + lists + "}";
}

std::string WithEffect(const std::string& effect) {
    return WithMetadata(R"({"version": "1.1", "count": 1, "ambientCount": 1})",
                        R"("sfx": [{"id": "a", "name": "A", "path": "a.sfx"}, )" + effect +
                            R"(], "ambient": [])");
}

TEST(SfxManifestFault, namesEveryMissingFile) {
    const BareInstall install;
    install.Write(u8"here.sfx");
    std::filesystem::create_directory(install.Path(u8"folder.sfx"));
    install.WriteManifest(WithMetadata(R"({"version": "1.1", "count": 3, "ambientCount": 1})", R"(
        "sfx": [{"id": "a", "name": "A", "path": "gone.sfx"},
                {"id": "b", "name": "B", "path": "here.sfx"},
                {"id": "c", "name": "C", "path": "folder.sfx"}],
        "ambient": [])"));
    EXPECT_EQ(
        Fault(),
        "The SFX manifest failed to find certain files, indicating the SFX install has failed "
        "or was corrupted. Please contact VEMO. The following errors were found:\n"
        "\tMissing: " +
            install.Text("gone.sfx") + "\n\tMissing: " + install.Text("folder.sfx") + "\n");
}

TEST(SfxManifestFault, acceptsVersionsFrom1Dot1To1Dot255) {
    const auto fault = [](const std::string& member) {
        return FaultOf(WithMetadata(R"({"count": 0, "ambientCount": 0)" + member + "}"));
    };
    for (const char* good : {"1.1", "1.255", "1.2.9"}) {
        EXPECT_EQ(fault(R"(, "version": ")" + std::string(good) + '"'), "") << good;
    }
    for (const char* bad : {R"("1.0")", R"("1")", R"("2.0")", R"("2.1")", R"("0.9")", R"("1.256")",
                            R"("")", R"("1.x")", "1.1", "null"}) {
        EXPECT_EQ(fault(R"(, "version": )" + std::string(bad)), "Unsupported sfx manifest version")
            << bad;
    }
    EXPECT_EQ(fault(""), "Unsupported sfx manifest version");
}

TEST(SfxManifestFault, refusesWhatIsNotJson) {
    const std::string parse = "Error parsing sound effects manifest";
    EXPECT_EQ(FaultOf(""), parse);
    EXPECT_EQ(FaultOf("{\"metadata\": {}} trailing"), parse);
    EXPECT_EQ(FaultOf(std::string(1000, '\xff')), parse);
    EXPECT_EQ(FaultOf(std::string(1000000, '[')), parse);
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    EXPECT_EQ(FaultOf("{\"metadata\": " + deep + "}"), parse);
}

TEST(SfxManifestFault, refusesFilesThatAreNoManifest) {
    {
        const BareInstall install;
        std::filesystem::create_directory(install.Path(u8"manifest.json"));
        EXPECT_THAT(Fault(), HasSubstr("manifest.json is not a file"));
    }
    const BareInstall install;
    install.WriteManifest("");
    std::filesystem::resize_file(install.Path(u8"manifest.json"), 100U << 20U);
    EXPECT_THAT(Fault(), HasSubstr("manifest.json is larger than 32 MiB"));
}

TEST(SfxManifestFault, namesTheMemberThatIsMissingOrOfTheWrongType) {
    EXPECT_EQ(FaultOf("{}"), "No metadata available for sound effects");
    const std::string good = R"({"version": "1.1", "count": 1, "ambientCount": 1})";
    EXPECT_EQ(FaultOf(WithMetadata(good, R"("sfx": [])")), "No sound effects available");
    EXPECT_EQ(FaultOf(WithMetadata(good, R"("ambient": [])")), "No sound effects available");

    EXPECT_THAT(FaultOf("[1]"), HasSubstr("document must be an object"));
    EXPECT_THAT(FaultOf(WithMetadata("7")), HasSubstr("metadata must be an object"));
    EXPECT_THAT(FaultOf(WithMetadata("{}")), HasSubstr("metadata.ambientCount must be"));
    EXPECT_THAT(FaultOf(WithMetadata(R"({"version": "1.1", "ambientCount": 1})")),
                HasSubstr("metadata.count must be"));
    EXPECT_THAT(FaultOf(WithMetadata(good, R"("sfx": {}, "ambient": [])")),
                HasSubstr("sfx must be an array"));

    EXPECT_THAT(FaultOf(WithEffect("3")), HasSubstr("sfx[1] must be an object"));
    EXPECT_THAT(FaultOf(WithEffect(R"({"name": "A", "path": "a.sfx"})")),
                HasSubstr("sfx[1].id must be a string"));
    EXPECT_THAT(FaultOf(WithEffect(R"({"id": "b", "name": [], "path": "a.sfx"})")),
                HasSubstr("sfx[1].name must be a string"));
    EXPECT_THAT(FaultOf(WithEffect(R"({"id": "b\u0000c", "name": "", "path": "a.sfx"})")),
                HasSubstr("sfx[1].id must not hold a NUL"));
    EXPECT_THAT(FaultOf(WithEffect(R"({"id": "b", "name": "", "path": "a.sfx\u0000"})")),
                HasSubstr("sfx[1].path must not hold a NUL"));
}

TEST(SfxManifestFault, refusesCountsThatMakeNoSense) {
    const auto fault = [](const std::string& count) {
        return FaultOf(
            WithMetadata(R"({"version": "1.1", "count": 1, "ambientCount": )" + count + "}",
                         R"("sfx": [], "ambient": [{"id": "a", "name": "A", "path": "a.sfx"}])"));
    };
    EXPECT_EQ(fault("1"), "");
    EXPECT_EQ(fault("1000"), "");
    EXPECT_THAT(fault("2147483647"), HasSubstr("metadata.ambientCount is 2147483647, more than"));
    EXPECT_THAT(fault("-2"), HasSubstr("metadata.ambientCount is -2"));
    EXPECT_THAT(fault("0"), HasSubstr("metadata.ambientCount is 0, but ambient holds 1 effects"));
    for (const char* noInteger : {"2147483648", "1.5", "\"1\"", "true"}) {
        EXPECT_THAT(fault(noInteger), HasSubstr("metadata.ambientCount must be a 32-bit integer"))
            << noInteger;
    }

    const BareInstall install;
    install.WriteManifest(WithMetadata(R"({"version": "0.0", "count": 0, "ambientCount": -1})"));
    EXPECT_EQ(Fault<std::invalid_argument>(), "Size is too large"); // before the version is asked
}

} // namespace
