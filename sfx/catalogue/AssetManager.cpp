#include <sfx/catalogue/AssetManager.h>

#include <filesystem>
#include <optional>
#include <utility>

#include <sfx/model/BadFileException.h>

#include "AssetDocument.h"
#include "AssetFile.h"
#include "AssetSchema.h"
#include "Utf8Path.h"

namespace vemo {

namespace {

bool StaysInside(const std::filesystem::path& normal) {
    return !normal.has_root_path() && (normal.empty() || *normal.begin() != "..");
}

std::string ReadBelow(const std::string& baseFolder, const std::string& filename) {
    const std::optional<std::filesystem::path> base = sfx::TryPathFromUtf8(baseFolder);
    const std::optional<std::filesystem::path> file = sfx::TryPathFromUtf8(filename);
    if (!base || !file) {
        throw BadFileException("Unable to read file " + baseFolder + "/" + filename);
    }
    // Behind a link, ".." would lead to another folder than it seems.
    const std::filesystem::path normal = file->lexically_normal();
    std::optional<std::string> bytes;
    if (StaysInside(normal)) {
        bytes = sfx::ReadFile(*base / normal);
    }
    if (!bytes) {
        throw BadFileException("Unable to read file " + sfx::Utf8FromPath(*base / *file));
    }
    return std::move(*bytes);
}

} // namespace

AssetManager::AssetManager(const std::string& schemaPath, const std::string& assetPath,
                           const std::string& baseFolder) {
    const sfx::AssetSchema schema(schemaPath);
    const sfx::AssetDocument document(assetPath, schema);
    document.RequireFileType();
    if (!document.IsSupportedVersion()) {
        return;
    }
    document.ForEachAsset([&](const AssetDescriptor& descriptor) {
        // A file is read even for an id that is there already: none may be missing.
        std::string bytes = ReadBelow(baseFolder, descriptor.SourceFilename());
        assets_.try_emplace(descriptor.Id(), descriptor, std::move(bytes));
    });
}

AssetManager::AssetManager(AssetManager&& other) noexcept = default;
AssetManager& AssetManager::operator=(AssetManager&& other) noexcept = default;
AssetManager::~AssetManager() = default;

const Asset& AssetManager::GetAsset(const std::string& id) {
    return assets_[id];
}

} // namespace vemo
