#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vemo::tool {

/// One effect as manifest.json lists it.
struct ManifestEntry {
    std::string id;
    std::string name;
    /// Relative to the install folder.
    std::string path;
    bool ambient = false;
};

/// What manifest.json says, before anything is checked against the folder.
struct ManifestText {
    std::vector<ManifestEntry> entries;
    int count = 0;
    int ambientCount = 0;
    /// Empty when there is none, or one that is no string.
    std::optional<std::string> version;
};

/// The text of a manifest for `entries`, whose counts are filled in.
std::string writeManifest(const std::vector<ManifestEntry>& entries);

/// Reads `folder`/manifest.json; ToolError (NoInstall) when it is missing, not JSON, or lacks a
/// member, which the error names. It is more patient than the library, which stops at the first
/// missing file: verify reports them all.
ManifestText readManifest(const std::filesystem::path& folder);

} // namespace vemo::tool
