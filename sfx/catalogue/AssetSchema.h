#pragma once

#include <memory>
#include <string>

#include <rapidjson/fwd.h>

namespace vemo::sfx {

/// The JSON schema that asset descriptions must fulfil. Nothing is ever fetched for it. Made and
/// used by one thread.
class AssetSchema {
public:
    /// Throws BadFileException for a file that holds no schema.
    explicit AssetSchema(const std::string& path);
    ~AssetSchema();
    AssetSchema(const AssetSchema&) = delete;
    AssetSchema& operator=(const AssetSchema&) = delete;

    /// Throws BadFileException that says which rule the document breaks, and where.
    void Require(const rapidjson::Document& document) const;

private:
    struct Compiled;

    std::unique_ptr<Compiled> compiled_;
};

} // namespace vemo::sfx
