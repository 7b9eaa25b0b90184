#include "DataRoot.h"

#include <fstream>
#include <stdexcept>
#include <system_error>

#include <QByteArray>
#include <QTemporaryDir>

#include <sfx/catalogue/SfxManifest.h>
#include <sfx/catalogue/SfxVector.h>

#include "ManifestText.h"
#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

const char* const DEFAULT_INSTALL = "vemo_data/sfx in the first folder of XDG_DATA_DIRS";

// The library knows only the data folders of the session, so a link stands in for one; that also
// copes with paths that hold a colon, which XDG_DATA_DIRS cannot.
struct DataRoot::Place {
    QTemporaryDir root;
    QByteArray before = qgetenv("XDG_DATA_DIRS");

    void publish(bool made) const {
        if (!root.isValid() || !made) {
            throw ToolError(ExitCode::NoInstall,
                            "cannot write in the folder for temporary files, " +
                                root.path().toStdString());
        }
        qputenv("XDG_DATA_DIRS", root.path().toUtf8() + (before.isEmpty() ? "" : ":" + before));
    }
};

DataRoot::DataRoot() : place_(std::make_unique<Place>()) {
    // Without an effect, or the library would say that there is no manifest.
    std::error_code error;
    fs::create_directories(link(), error);
    std::ofstream(link() / "manifest.json") << writeManifest({});
    place_->publish(fs::is_regular_file(link() / "manifest.json", error));
}

DataRoot::DataRoot(const fs::path& install) : place_(std::make_unique<Place>()) {
    std::error_code error;
    fs::create_directories(link().parent_path(), error);
    if (!error) {
        fs::create_directory_symlink(install, link(), error);
    }
    place_->publish(!error);
}

DataRoot::~DataRoot() {
    if (place_->before.isNull()) {
        qunsetenv("XDG_DATA_DIRS");
    } else {
        qputenv("XDG_DATA_DIRS", place_->before);
    }
}

fs::path DataRoot::link() const {
    return place_->root.path().toStdString() / belowDataRoot();
}

namespace {

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

std::vector<InstalledEffect> readFromLibrary() {
    const vemo::sfx::SfxManifest manifest;
    std::vector<InstalledEffect> effects;
    const auto add = [&](auto list, bool ambient) {
        for (std::size_t i = 0; i < list.Count(); ++i) {
            const std::string id = list.Get(i);
            effects.push_back(
                {id, manifest.displayName(id).value_or(id), list.GetPath(i), ambient});
        }
    };
    add(manifest.SoundEffects(), false);
    add(manifest.AmbientEffects(), true);
    return effects;
}

} // namespace

std::vector<InstalledEffect> readCatalogue(const fs::path& folder) {
    const DataRoot root(folder);
    try {
        std::vector<InstalledEffect> effects = readFromLibrary();
        for (InstalledEffect& effect : effects) {
            replaceAll(effect.path, root.link().string(), folder.string());
        }
        return effects;
    } catch (const std::exception& error) {
        std::string reason = error.what();
        replaceAll(reason, root.link().string() + "/", "");
        replaceAll(reason, "\n", "");
        replaceAll(reason, "\t", " ");
        throw std::runtime_error(reason);
    }
}

} // namespace vemo::tool
