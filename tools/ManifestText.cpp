#include "ManifestText.h"

#include <algorithm>
#include <fstream>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/istreamwrapper.h>

#include "JsonOut.h"
#include "PathText.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

const char* listKey(bool ambient) {
    return ambient ? "ambient" : "sfx";
}
const char* countKey(bool ambient) {
    return ambient ? "ambientCount" : "count";
}

class Reader {
public:
    explicit Reader(std::filesystem::path file) : file_(std::move(file)) {}

    [[noreturn]] void fail(const std::string& what) const {
        throw ToolError(ExitCode::NoInstall, pathText(file_) + ": " + what);
    }

    const rapidjson::Value& member(const rapidjson::Value& object, const char* key,
                                   const std::string& where) const {
        const auto found = object.FindMember(key);
        if (found == object.MemberEnd()) {
            fail(where + " has no \"" + key + "\"");
        }
        return found->value;
    }

    int integer(const rapidjson::Value& object, const char* key, const std::string& where) const {
        const rapidjson::Value& value = member(object, key, where);
        if (!value.IsInt()) {
            fail("\"" + std::string(key) + "\" of " + where + " is not a whole number");
        }
        return value.GetInt();
    }

    std::string string(const rapidjson::Value& object, const char* key,
                       const std::string& where) const {
        const rapidjson::Value& value = member(object, key, where);
        if (!value.IsString()) {
            fail("\"" + std::string(key) + "\" of " + where + " is not a string");
        }
        return {value.GetString(), value.GetStringLength()};
    }

    void list(const rapidjson::Value& document, bool ambient,
              std::vector<ManifestEntry>& to) const {
        const rapidjson::Value& list = member(document, listKey(ambient), "the manifest");
        if (!list.IsArray()) {
            fail("\"" + std::string(listKey(ambient)) + "\" is not a list");
        }
        for (rapidjson::SizeType i = 0; i < list.Size(); ++i) {
            const std::string where =
                "effect " + std::to_string(i + 1) + " of \"" + listKey(ambient) + "\"";
            if (!list[i].IsObject()) {
                fail(where + " is not an object");
            }
            to.push_back({string(list[i], "id", where), string(list[i], "name", where),
                          string(list[i], "path", where), ambient});
        }
    }

private:
    std::filesystem::path file_;
};

void writeList(JsonOut& json, const std::vector<ManifestEntry>& entries, bool ambient) {
    json.Key(listKey(ambient));
    json.StartArray();
    for (const ManifestEntry& entry : entries) {
        if (entry.ambient == ambient) {
            json.StartObject();
            json.member("id", entry.id);
            json.member("name", entry.name);
            json.member("path", entry.path);
            json.EndObject();
        }
    }
    json.EndArray();
}

} // namespace

std::string writeManifest(const std::vector<ManifestEntry>& entries) {
    const auto ambient = std::count_if(entries.begin(), entries.end(),
                                       [](const ManifestEntry& entry) { return entry.ambient; });
    JsonOut json;
    json.StartObject();
    json.Key("metadata");
    json.StartObject();
    json.member("version", "1.1");
    json.Key(countKey(false));
    json.Int64(static_cast<std::int64_t>(entries.size()) - ambient);
    json.Key(countKey(true));
    json.Int64(ambient);
    json.EndObject();
    writeList(json, entries, false);
    writeList(json, entries, true);
    json.EndObject();
    return json.text();
}

ManifestText readManifest(const std::filesystem::path& folder) {
    const Reader reader(folder / "manifest.json");
    std::ifstream in(folder / "manifest.json", std::ios::binary);
    if (!in) {
        reader.fail("cannot be read");
    }
    rapidjson::IStreamWrapper stream(in);
    rapidjson::Document document;
    document.ParseStream(stream);
    if (document.HasParseError()) {
        reader.fail(
            "is not JSON: " + std::string(rapidjson::GetParseError_En(document.GetParseError())) +
            " (byte " + std::to_string(document.GetErrorOffset()) + ")");
    }
    if (!document.IsObject()) {
        reader.fail("is not a JSON object");
    }
    const rapidjson::Value& metadata = reader.member(document, "metadata", "the manifest");
    if (!metadata.IsObject()) {
        reader.fail("\"metadata\" is not an object");
    }
    ManifestText text;
    text.count = reader.integer(metadata, countKey(false), "\"metadata\"");
    text.ambientCount = reader.integer(metadata, countKey(true), "\"metadata\"");
    if (const auto version = metadata.FindMember("version");
        version != metadata.MemberEnd() && version->value.IsString()) {
        text.version = {version->value.GetString(), version->value.GetStringLength()};
    }
    reader.list(document, false, text.entries);
    reader.list(document, true, text.entries);
    return text;
}

} // namespace vemo::tool
