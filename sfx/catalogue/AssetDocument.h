#pragma once

#include <functional>
#include <string>

#include <sfx/catalogue/AssetDescriptor.h>

#include "AssetSchema.h"
#include "JsonDocument.h"

namespace vemo::sfx {

/// An asset description that fulfils a schema. Every operation throws BadFileException that names
/// what is missing or of the wrong type. Made and used by one thread.
class AssetDocument {
public:
    AssetDocument(const std::string& path, const AssetSchema& schema);

    /// Throws BadFileException "Wrong File Type String".
    void RequireFileType() const;
    bool IsSupportedVersion() const;
    /// Calls `visit` with every asset, in the order of the file.
    void ForEachAsset(const std::function<void(const AssetDescriptor&)>& visit) const;

private:
    rapidjson::Document document_;
};

} // namespace vemo::sfx
