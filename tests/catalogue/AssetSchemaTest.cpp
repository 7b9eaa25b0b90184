#include <algorithm>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AssetFolder.h"

namespace {

using testing::HasSubstr;

// Whether `schema` admits a description with `value` as a further member. Fails for one that is
// refused itself.
bool Admits(const std::string& schema, const std::string& value) {
    static const AssetFolder folder;
    const std::string fault = folder.Fault(
        R"({"filetype": "vemo_assets", "version": "1.0", "assets": [], "more": )" + value + "}",
        R"({"properties": {"more": )" + schema + "}}");
    EXPECT_TRUE(fault.empty() || fault.find("Failed Validation: Invalid schema: ") != fault.npos)
        << schema << ": " << fault;
    return fault.empty();
}

std::string Refusal(const std::string& schema) {
    static const AssetFolder folder;
    const std::string fault = folder.Fault(Described(""), schema);
    const std::string begin = "Asset Manager Schema Document is not Valid: #";
    EXPECT_TRUE(fault.starts_with(begin)) << schema << ": " << fault;
    return fault.substr(std::min(fault.size(), begin.size()));
}

TEST(AssetSchema, refusesWhatTheValidatorCannotTake) {
    for (const char* noObject : {"[]", "[{}]", "true", "\"\"", "7"}) {
        EXPECT_EQ(Refusal(noObject), " must be an object") << noObject;
    }
    for (const char* wrong :
         {R"({"items": [true]})", R"({"allOf": [{}, 1]})", R"({"oneOf": ["a"]})",
          R"({"properties": {"a": {"anyOf": [[]]}}})", R"({"not": 5})",
          R"({"patternProperties": 5})", R"({"patternProperties": {"a": true}})",
          R"({"dependencies": {"a": [1]}})"}) {
        EXPECT_THAT(Refusal(wrong), HasSubstr(" holds a value of the wrong type")) << wrong;
    }
    EXPECT_EQ(Refusal(R"({"dependencies": {"a": {}, "a": {}}})"),
              "/dependencies/a stands there twice");
    std::string many;
    for (int i = 0; i < 4096; ++i) {
        many += "{},";
    }
    EXPECT_EQ(Refusal(R"({"a": [)" + many + "1]}"), " holds more than 4096 objects");
}

TEST(AssetSchema, refusesReferencesThatLeadNowhere) {
    EXPECT_EQ(Refusal(R"({"items": {"$ref": "http://localhost:1/x.json#/a"}})"),
              "/items refers to another document: http://localhost:1/x.json#/a");
    EXPECT_EQ(Refusal(R"({"a": {"$ref": "other.json"}})"),
              "/a refers to another document: other.json");
    for (const char* unknown : {"#/b", "#x", "#/a/0", "#/definitions/0", "#/list/9", "#/text"}) {
        EXPECT_EQ(Refusal(R"({"$ref": ")" + std::string(unknown) +
                          R"(", "definitions": {"0": {}}, "list": [{}], "text": "", "a": {}})"),
                  " refers to no schema in this document: " + std::string(unknown));
    }
    for (const char* endless :
         {R"({"$ref": "#"})", R"({"allOf": [{"$ref": "#"}]})",
          R"({"dependencies": {"x": {"not": {"$ref": "#"}}}})",
          R"({"$ref": "#/a", "a": {"$ref": "#/b"}, "b": {"oneOf": [{"$ref": "#/a"}]}})"}) {
        EXPECT_THAT(Refusal(endless), HasSubstr(" refers to itself")) << endless;
    }

    std::string chain;
    std::string tree;
    for (int i = 0; i < 100; ++i) {
        const std::string next = R"({"$ref": "#/d)" + std::to_string(i + 1) + "\"}";
        const std::string begin = "\"d" + std::to_string(i) + "\": ";
        chain += begin + next + ",";
        tree += begin + R"({"allOf": [)" + next + "," + next + "]},";
    }
    EXPECT_THAT(Refusal("{" + chain + R"("d100": {}})"), HasSubstr(" refers over too many others"));
    EXPECT_THAT(Refusal("{" + tree.substr(tree.find("\"d80\"")) + R"("d100": {}})"),
                HasSubstr(" applies too many schemas to one value"));
}

TEST(AssetSchema, admitsSchemasThatReferToThemselvesFurtherDown) {
    const std::string schema = R"({"type": "object", "additionalProperties":
        {"$ref": "#/properties/more"}})";
    EXPECT_TRUE(Admits(schema, R"({"a": {"b": {"c": {}}}})"));
    EXPECT_FALSE(Admits(schema, R"({"a": {"b": {"c": 1}}})"));
}

TEST(AssetSchema, admitsNoOtherPropertiesBesidePatterns) {
    const std::string schema = R"({"properties": {"a": {"type": "string"}},
        "patternProperties": {"^x_": {"type": "number"}}, "additionalProperties": false})";
    EXPECT_TRUE(Admits(schema, R"({"x_1": 1, "a": "", "x_2": 2})"));
    EXPECT_FALSE(Admits(schema, R"({"x_1": ""})"));
    EXPECT_FALSE(Admits(schema, R"({"a": "", "x_1": 1, "b": 1})"));
    EXPECT_FALSE(Admits(schema, R"({"a": 1})"));
    EXPECT_FALSE(Admits(R"({"patternProperties": {"": {"type": "number"}}})", R"({"any": ""})"));
}

TEST(AssetSchema, matchesPatterns) {
    const auto matches = [](const std::string& pattern, const std::string& text) {
        return Admits(R"({"pattern": ")" + pattern + "\"}", '"' + text + '"');
    };
    EXPECT_TRUE(matches(R"(^\\d+\\.\\d{1,2}$)", "10.25"));
    EXPECT_FALSE(matches(R"(^\\d+\\.\\d{1,2}$)", "10.255"));
    EXPECT_TRUE(matches(R"(^(?:[\\w\\-]+/)*[^/\\s]+\\.(png|jpe?g)$)", "a-b/c_d/ü.jpg"));
    EXPECT_FALSE(matches(R"(^(?:[\\w\\-]+/)*[^/\\s]+\\.(png|jpe?g)$)", "a.b/c.png"));
    EXPECT_TRUE(matches("a+?b", "xaab"));
    EXPECT_FALSE(matches("a+?b", "b"));
    EXPECT_TRUE(matches("x*", "a"));
    EXPECT_TRUE(matches("", "a"));
    EXPECT_FALSE(matches(R"(^\\D*$)", "a1"));
    EXPECT_FALSE(matches("^ü{2}$", "ü"));
    // A long text costs neither stack nor time.
    EXPECT_TRUE(matches("^(a|b)*$", std::string(1000000, 'b')));
}

TEST(AssetSchema, refusesPatternsThatTheEngineCannotTake) {
    std::istringstream patterns(R"(
        (a*)* (a|b?)+ (a*){2,} {3} ()a a| (|a) (a a) a** * [] [a \\ \\bx (?=a) a{0} a{2,1} a{
        (a{1000}){1000} x^a ^a|b (\u0000))");
    for (std::string pattern; patterns >> pattern;) {
        EXPECT_THAT(Refusal(R"({"pattern": ")" + pattern + "\"}"),
                    testing::StartsWith("/pattern holds a pattern that is not supported: "));
    }
    EXPECT_THAT(Refusal(R"({"patternProperties": {"(a": {}}})"), HasSubstr("not supported: (a"));
}

} // namespace
