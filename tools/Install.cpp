#include "Install.h"

#include <algorithm>
#include <exception>
#include <system_error>

#include <QByteArray>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sfx/catalogue/SfxManifest.h>
#include <sfx/catalogue/SfxVector.h>

#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

const fs::path BELOW_ROOT = fs::path("vemo_data") / "sfx";

bool hasManifest(const fs::path& folder) {
    std::error_code error;
    return fs::is_regular_file(folder / "manifest.json", error);
}

[[noreturn]] void refuse(const std::string& line) {
    throw ToolError(ExitCode::NoInstall, line);
}

fs::path defaultFolder() {
    const QStringList roots =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    if (roots.size() < 2) {
        refuse("no install: XDG_DATA_DIRS names no folder");
    }
    return fs::path(roots[1].toStdString()) / BELOW_ROOT;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// Makes `folder` the place where the library looks, while it lives. The library knows only the
/// data folders of the session, so a link stands in for one; that also copes with paths that hold
/// a colon, which XDG_DATA_DIRS cannot.
class DataRoot {
public:
    explicit DataRoot(const fs::path& folder) : before_(qgetenv("XDG_DATA_DIRS")) {
        std::error_code error;
        const fs::path root = root_.path().toStdString();
        fs::create_directories(root / BELOW_ROOT.parent_path(), error);
        if (!error) {
            fs::create_directory_symlink(folder, root / BELOW_ROOT, error);
        }
        if (!root_.isValid() || error) {
            refuse("cannot write in the folder for temporary files, " + root.string());
        }
        qputenv("XDG_DATA_DIRS", root_.path().toUtf8() + (before_.isEmpty() ? "" : ":" + before_));
    }
    ~DataRoot() {
        if (before_.isNull()) {
            qunsetenv("XDG_DATA_DIRS");
        } else {
            qputenv("XDG_DATA_DIRS", before_);
        }
    }
    DataRoot(const DataRoot&) = delete;
    DataRoot& operator=(const DataRoot&) = delete;

    std::string linkText() const {
        return (fs::path(root_.path().toStdString()) / BELOW_ROOT).string();
    }

private:
    QTemporaryDir root_;
    QByteArray before_;
};

std::vector<InstalledEffect> readCatalogue() {
    vemo::sfx::SfxManifest manifest;
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

bool sameLetters(const std::string& a, const std::string& b) {
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) == 0;
}

} // namespace

fs::path locateInstall(const std::string& folder) {
    if (folder.empty()) {
        fs::path found = defaultFolder();
        if (!hasManifest(found)) {
            refuse("no install in " + found.string() + ": it has no manifest.json");
        }
        return found;
    }
    for (const fs::path& candidate : {fs::path(folder), folder / BELOW_ROOT}) {
        if (hasManifest(candidate)) {
            return fs::canonical(candidate);
        }
    }
    refuse("no install in " + folder +
           ": neither manifest.json nor vemo_data/sfx/manifest.json is there");
}

Install Install::open(const std::string& folder) {
    Install install;
    install.folder_ = locateInstall(folder);
    const DataRoot root(install.folder_);
    try {
        install.effects_ = readCatalogue();
    } catch (const std::exception& error) {
        std::string reason = error.what();
        replaceAll(reason, root.linkText() + "/", "");
        replaceAll(reason, "\n", "");
        replaceAll(reason, "\t", " ");
        refuse(install.folder_.string() + ": " + reason);
    }
    for (InstalledEffect& effect : install.effects_) {
        replaceAll(effect.path, root.linkText(), install.folder_.string());
    }
    return install;
}

const InstalledEffect* Install::find(const std::string& text) const {
    const auto first = [this](auto fits) -> const InstalledEffect* {
        const auto found = std::find_if(effects_.begin(), effects_.end(), fits);
        return found == effects_.end() ? nullptr : &*found;
    };
    const InstalledEffect* found = first([&](const auto& effect) { return effect.id == text; });
    if (!found) {
        found = first([&](const auto& effect) { return effect.id == text + ".sfx"; });
    }
    if (!found) {
        found = first([&](const auto& effect) { return sameLetters(effect.name, text); });
    }
    return found;
}

} // namespace vemo::tool
