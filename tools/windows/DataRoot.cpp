#include "DataRoot.h"

#include <stdexcept>
#include <system_error>

#include <vemo_core/FileVersion.h>

#include "ManifestText.h"
#include "PathText.h"
#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

const char* const DEFAULT_INSTALL =
    "vemo_data\\sfx in ProgramData; a show and the console play from that one only";

// The library's place is a folder of the system, which no process can choose for itself.
struct DataRoot::Place {};

DataRoot::DataRoot() = default;

DataRoot::DataRoot(const fs::path& install) {
    std::error_code error;
    const fs::path own = defaultInstall();
    if (!fs::equivalent(install, own, error)) {
        throw ToolError(ExitCode::NoInstall, "on Windows a show plays from " + pathText(own) +
                                                 " and not from " + pathText(install) +
                                                 "; its effects can be packed into that folder");
    }
}

DataRoot::~DataRoot() = default;

fs::path DataRoot::link() const {
    return defaultInstall();
}

namespace {

// As the library takes a manifest that says nothing, or nothing that is a version.
cmn::FileVersion versionOf(const ManifestText& manifest) {
    try {
        return manifest.version ? cmn::FileVersion(*manifest.version) : cmn::FileVersion(1, 0);
    } catch (const std::invalid_argument&) {
        return {0, 0};
    }
}

bool isFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

} // namespace

// What the library would say of the folder if it were its own.
std::vector<InstalledEffect> readCatalogue(const fs::path& folder) {
    const ManifestText manifest = readManifest(folder);
    const cmn::FileVersion version = versionOf(manifest);
    if (version < cmn::FileVersion(1, 1) || version >= cmn::FileVersion(2, 0)) {
        throw std::runtime_error("Unsupported sfx manifest version");
    }
    std::vector<InstalledEffect> effects;
    std::string missing;
    for (const ManifestEntry& entry : manifest.entries) {
        const auto file = vemo::sfx::TryPathFromUtf8(entry.path);
        if (file && isFile(folder / *file)) {
            effects.push_back({entry.id, entry.name, pathText(folder / *file), entry.ambient});
        } else {
            missing += " Missing: " + entry.path;
        }
    }
    if (!missing.empty()) {
        throw std::runtime_error("the install has failed or was damaged:" + missing);
    }
    return effects;
}

} // namespace vemo::tool
