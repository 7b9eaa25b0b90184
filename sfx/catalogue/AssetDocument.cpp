#include "AssetDocument.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include <sfx/model/BadFileException.h>

#include "AssetFile.h"

namespace vemo::sfx {

namespace {

constexpr const char* kFailed = "Asset Manager Failed Validation";
// It bounds the memory that the parsed document may take.
constexpr std::uintmax_t kLargestKiB = 65536;

[[noreturn]] void Refuse(const std::string& what) {
    throw BadFileException(std::string(kFailed) + ": " + what);
}

rapidjson::Document Parse(const std::string& path) {
    std::optional<rapidjson::Document> document = ParseJsonFile(path, kLargestKiB, Refuse);
    if (!document) {
        throw BadFileException(kFailed);
    }
    return std::move(*document);
}

// Reads a number as "%d" does and drops it from the front of `rest`. Meant: only its low eight
// bits count, however large it is.
std::optional<std::uint8_t> TakeLowByte(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\n\v\f\r"), rest.size()));
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) {
        rest.remove_prefix(1);
    }
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    if (digits == 0) {
        return std::nullopt;
    }
    unsigned value = 0;
    for (const char digit : rest.substr(0, digits)) {
        value = (value * 10 + static_cast<unsigned>(digit - '0')) & 0xFFU;
    }
    rest.remove_prefix(digits);
    return static_cast<std::uint8_t>(negative ? 0x100U - value : value);
}

} // namespace

AssetDocument::AssetDocument(const std::string& path, const AssetSchema& schema)
    : document_(Parse(path)) {
    schema.Require(document_);
}

void AssetDocument::RequireFileType() const {
    if (JsonObject(document_, "", Refuse).Text("filetype") != "vemo_assets") {
        throw BadFileException("Wrong File Type String");
    }
}

bool AssetDocument::IsSupportedVersion() const {
    const std::string version = JsonObject(document_, "", Refuse).Text("version");
    std::string_view rest = version;
    const std::optional<std::uint8_t> major = TakeLowByte(rest);
    if (!major || !rest.starts_with('.')) {
        return false;
    }
    rest.remove_prefix(1);
    const std::optional<std::uint8_t> minor = TakeLowByte(rest);
    return minor && (*major == 0 || (*major == 1 && *minor == 0));
}

void AssetDocument::ForEachAsset(const std::function<void(const AssetDescriptor&)>& visit) const {
    const rapidjson::Value* assets = FindMember(document_, "assets");
    if (assets == nullptr || !assets->IsArray()) {
        Refuse("assets must be an array");
    }
    for (rapidjson::SizeType i = 0; i < assets->Size(); ++i) {
        const JsonObject asset((*assets)[i], "assets[" + std::to_string(i) + "]", Refuse);
        // Braces: the members are read, and refused, in this order.
        visit(AssetDescriptor{asset.Text("type"), asset.Text("id"), asset.Text("group"),
                              asset.Text("name"), asset.TerminatedText("filename")});
    }
}

} // namespace vemo::sfx
