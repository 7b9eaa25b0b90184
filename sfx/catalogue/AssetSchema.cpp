#include "AssetSchema.h"

#include <sstream>
#include <utility>

#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include <sfx/model/BadFileException.h>

#include "AssetFile.h"
#include "SchemaCheck.h"

namespace vemo::sfx {

namespace {

constexpr const char* kNotValid = "Asset Manager Schema Document is not Valid";
constexpr std::uintmax_t kLargestKiB = 256;

[[noreturn]] void Refuse(const std::string& what) {
    throw BadFileException(std::string(kNotValid) + ": " + what);
}

rapidjson::Document UsableSchema(const std::string& path) {
    std::optional<rapidjson::Document> schema = ParseJsonFile(path, kLargestKiB, Refuse);
    if (!schema) {
        throw BadFileException(kNotValid);
    }
    MakeSchemaUsable(*schema, Refuse);
    return std::move(*schema);
}

std::string UriFragment(const rapidjson::SchemaDocument::PointerType& pointer) {
    rapidjson::StringBuffer text;
    pointer.StringifyUriFragment(text);
    return {text.GetString(), text.GetSize()};
}

} // namespace

struct AssetSchema::Compiled {
    explicit Compiled(const std::string& path) : text(UsableSchema(path)), schema(text) {}

    rapidjson::Document text;
    rapidjson::SchemaDocument schema;
};

AssetSchema::AssetSchema(const std::string& path) : compiled_(std::make_unique<Compiled>(path)) {}
AssetSchema::~AssetSchema() = default;

void AssetSchema::Require(const rapidjson::Document& document) const {
    rapidjson::SchemaValidator validator(compiled_->schema);
    if (document.Accept(validator)) {
        return;
    }
    const char* keyword = validator.GetInvalidSchemaKeyword();
    std::ostringstream fault;
    fault << "Invalid schema: " << UriFragment(validator.GetInvalidSchemaPointer()) << "\n"
          << "Invalid keyword: " << (keyword == nullptr ? "" : keyword) << "\n"
          << "Invalid document: " << UriFragment(validator.GetInvalidDocumentPointer()) << "\n";
    throw BadFileException("Asset Manager Failed Validation: " + fault.str());
}

} // namespace vemo::sfx
