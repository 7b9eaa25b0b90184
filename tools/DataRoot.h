#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "Install.h"

namespace vemo::tool {

/// Makes a folder the place where the library looks for its install, while it lives, as far as the
/// system lets that place be chosen.
class DataRoot {
public:
    /// For what needs no effect.
    DataRoot();
    /// `install` holds manifest.json. Both throw ToolError (NoInstall) when it cannot be done:
    /// there is no place for temporary files, or on Windows `install` is not the library's own
    /// place.
    explicit DataRoot(const std::filesystem::path& install);
    ~DataRoot();
    DataRoot(const DataRoot&) = delete;
    DataRoot& operator=(const DataRoot&) = delete;

    /// The path under which the library sees the install.
    std::filesystem::path link() const;

private:
    struct Place;

    std::unique_ptr<Place> place_;
};

/// The effects of the install in `folder`, the ambient ones last. Throws a standard exception with
/// what is wrong with its manifest, or a ToolError that names the folder as well.
std::vector<InstalledEffect> readCatalogue(const std::filesystem::path& folder);

/// As --help names the install that is taken when none is named.
extern const char* const DEFAULT_INSTALL;

} // namespace vemo::tool
