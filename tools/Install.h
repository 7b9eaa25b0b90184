#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vemo::tool {

/// One effect of an install as the library's catalogue gives it.
struct InstalledEffect {
    std::string id;
    std::string name;
    std::string path;
    bool ambient = false;
};

/// Where an install lies below a data folder.
std::filesystem::path belowDataRoot();

/// Where the library looks for its install by itself. ToolError (NoInstall) when it knows no place.
std::filesystem::path defaultInstall();

/// The folder that holds manifest.json: `folder` itself or vemo_data/sfx below it; empty: where the
/// library looks by itself. ToolError (NoInstall) when there is none.
std::filesystem::path locateInstall(const std::string& folder);

/// An install folder as the library sees it.
class Install {
public:
    /// `folder` as for locateInstall(). ToolError (NoInstall) with one line when there is no
    /// install or the library refuses it.
    static Install open(const std::string& folder);
    /// `folder` holds manifest.json.
    static Install open(const std::filesystem::path& folder);

    const std::filesystem::path& folder() const { return folder_; }
    const std::vector<InstalledEffect>& effects() const { return effects_; }
    /// By id, by id without its ending, or by display name; nullptr when there is none.
    const InstalledEffect* find(const std::string& text) const;
    /// The same; ToolError (UnknownEffect) when there is none.
    const InstalledEffect& require(const std::string& text) const;

private:
    std::filesystem::path folder_;
    std::vector<InstalledEffect> effects_;
};

/// What --install says in every command that has it.
std::string installHelp();

} // namespace vemo::tool
