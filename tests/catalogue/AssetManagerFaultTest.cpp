#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sfx/catalogue/AssetManager.h>

#include "AssetFolder.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace {

using testing::HasSubstr;

const std::string kFailed = "Asset Manager Failed Validation";
const std::string kNoSchema = "Asset Manager Schema Document is not Valid";

TEST(AssetManagerFault, refusesFilesThatCannotBeReadOrAreNotJson) {
    const AssetFolder folder;
    EXPECT_EQ(folder.Fault(), kNoSchema);
    folder.Write(u8"schema.json", "{}");
    EXPECT_EQ(folder.Fault(), kFailed);
    std::filesystem::create_directory(folder.Path(u8"assets.json"));
    EXPECT_EQ(folder.Fault(), kFailed);
    std::filesystem::remove(folder.Path(u8"assets.json"));
#ifndef _WIN32
    ASSERT_EQ(mkfifo(folder.Path(u8"assets.json").c_str(), 0600), 0);
    EXPECT_EQ(folder.Fault(), kFailed); // and does not wait for somebody to write
    std::filesystem::remove(folder.Path(u8"assets.json"));
#endif

    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    for (const std::string& bad :
         {std::string(), std::string("{\"a\": 1"), Described("") + "x", std::string(1000, '\xff'),
          Described("") + std::string("\0x", 2), deep, std::string(100000, '['), Described(deep)}) {
        EXPECT_EQ(folder.Fault(bad), kFailed) << bad.substr(0, 50);
        EXPECT_EQ(folder.Fault(Described(""), bad), kNoSchema) << bad.substr(0, 50);
    }
}

TEST(AssetManagerFault, refusesFilesThatAreTooLarge) {
    const AssetFolder folder;
    const std::string large(std::size_t{50} << 20U, 'n');
    EXPECT_EQ(folder.Fault(R"({"filetype": ")" + large + "\"}"), "Wrong File Type String");
    EXPECT_THAT(folder.Fault(Described(""), '"' + large + '"'),
                testing::MatchesRegex(kNoSchema + ": .*schema.json is larger than 256 KiB"));
    folder.Write(u8"schema.json", "{}");
    std::filesystem::resize_file(folder.Path(u8"assets.json"), 65U << 20U);
    EXPECT_THAT(folder.Fault(),
                testing::MatchesRegex(kFailed + ": .*assets.json is larger than 65536 KiB"));
}

TEST(AssetManagerFault, saysWhichRuleIsBrokenAndWhere) {
    const AssetFolder folder;
    EXPECT_EQ(folder.Fault(R"({"assets": [{}, {"a/b": {"ü": 3}}]})",
                           R"({"properties": {"assets": {"items": {"$ref": "#/definitions/x"}}},
                "definitions": {"x": {"additionalProperties": {"additionalProperties":
                    {"type": "string"}}}}})"),
              "Asset Manager Failed Validation: "
              "Invalid schema: #/definitions/x/additionalProperties/additionalProperties\n"
              "Invalid keyword: type\n"
              "Invalid document: #/assets/1/a~1b/%C3%BC\n");
    EXPECT_EQ(folder.Fault("[]", R"({"type": "object"})"),
              "Asset Manager Failed Validation: "
              "Invalid schema: #\nInvalid keyword: type\nInvalid document: #\n");
    EXPECT_THAT(folder.Fault(Described(""), R"({"required": ["author"]})"),
                HasSubstr("Invalid keyword: required\n"));
}

TEST(AssetManagerFault, namesTheMemberThatNoSchemaAskedFor) {
    const AssetFolder folder;
    folder.Write(u8"base/a");
    EXPECT_EQ(folder.Fault("[1]"), kFailed + ": the document must be an object");
    EXPECT_EQ(folder.Fault("{}"), kFailed + ": filetype must be a string");
    for (const char* type : {"vemo_assets ", "vemo_asset", "Vemo_assets", "vemo_assets\\u0000"}) {
        EXPECT_EQ(folder.Fault(R"({"filetype": ")" + std::string(type) + "\"}"),
                  "Wrong File Type String");
    }
    const std::string begin = R"({"filetype": "vemo_assets")";
    EXPECT_EQ(folder.Fault(begin + R"(, "version": 1.0})"), kFailed + ": version must be a string");
    EXPECT_EQ(folder.Fault(begin + R"(, "version": "1.0", "assets": {}})"),
              kFailed + ": assets must be an array");

    const auto fault = [&](const std::string& asset) {
        return folder.Fault(Described(OneAsset("a", "a") + "," + asset));
    };
    EXPECT_EQ(fault("3"), kFailed + ": assets[1] must be an object");
    EXPECT_EQ(fault(R"({"type": 1})"), kFailed + ": assets[1].type must be a string");
    EXPECT_EQ(fault(R"({"type": "", "id": "", "group": "", "name": ""})"),
              kFailed + ": assets[1].filename must be a string");
    EXPECT_EQ(fault(OneAsset("b", "a\\u0000")),
              kFailed + ": assets[1].filename must not hold a NUL character");
}

TEST(AssetManagerFault, namesTheFileThatIsMissing) {
    const AssetFolder folder;
    folder.Write(u8"base/a");
    std::filesystem::create_directory(folder.Path(u8"base/dir"));
    EXPECT_EQ(folder.Fault(Described(OneAsset("x", "dir"))), folder.Unreadable(u8"dir"));
    // A file is asked for even where its id is there already.
    EXPECT_EQ(folder.Fault(Described(OneAsset("x", "a") + "," + OneAsset("x", "gone"))),
              folder.Unreadable(u8"gone"));
}

} // namespace
