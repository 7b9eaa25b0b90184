#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <rapidjson/fwd.h>

#include <sfx/catalogue/SfxVector.h>
#include <sfx/model/SfxType.h>

#include "JsonDocument.h"

namespace vemo::sfx {

/// One effect of the manifest. Constructor and accessors throw std::runtime_error that names what
/// is no object, or the member that is missing, not a string, or (where it ends up in a
/// NUL-terminated string) holds a NUL.
class ManifestEffect {
public:
    ManifestEffect(const rapidjson::Value& value, std::string where, const std::string& folder);

    std::string Id() const;
    /// Display name.
    std::string Name() const;
    /// The effect's file below the install folder, as UTF-8.
    std::string FullPath() const;

private:
    JsonObject object_;
    const std::string& folder_;
};

/// The "manifest.json" of the install folder, read and parsed once. Nothing in the file makes it
/// assert or take memory out of proportion. Made and used by one thread.
class ManifestDocument {
public:
    /// None, after a line on standard output, if there is no manifest. Throws std::runtime_error
    /// for a manifest that cannot be read, is not JSON or has no metadata.
    static std::optional<ManifestDocument> OpenInstalled();

    ManifestDocument(ManifestDocument&& other) noexcept;
    ManifestDocument& operator=(ManifestDocument&&) = delete;
    ~ManifestDocument();

    /// Gives `list` the capacity that the metadata declares for `type`.
    /// Throws std::invalid_argument "Size is too large" for a count of -1, std::runtime_error for
    /// any other that makes no sense.
    void ResizeToDeclaredCount(audio::SfxType type, audio::sfx::SfxVector& list) const;
    /// Throws std::runtime_error unless the version is 1.1 to 1.255.
    void RequireSupportedVersion() const;
    /// Calls `visit` with every effect of `type`, in the order of the file.
    void ForEachEffect(audio::SfxType type,
                       const std::function<void(const ManifestEffect&)>& visit) const;

private:
    explicit ManifestDocument(const std::filesystem::path& folder);

    int DeclaredCount(audio::SfxType type) const;

    std::string folder_;
    std::uintmax_t fileSize_ = 0;
    std::unique_ptr<rapidjson::Document> document_;
};

} // namespace vemo::sfx
