#include "Install.h"

#include <algorithm>
#include <exception>
#include <system_error>

#include <QStandardPaths>

#include <sfx/catalogue/SfxManifest.h>
#include <sfx/catalogue/SfxVector.h>

#include "DataRoot.h"
#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

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
    return fs::path(roots[1].toStdString()) / DataRoot::belowRoot();
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

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
    for (const fs::path& candidate : {fs::path(folder), folder / DataRoot::belowRoot()}) {
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
        replaceAll(reason, root.link().string() + "/", "");
        replaceAll(reason, "\n", "");
        replaceAll(reason, "\t", " ");
        refuse(install.folder_.string() + ": " + reason);
    }
    for (InstalledEffect& effect : install.effects_) {
        replaceAll(effect.path, root.link().string(), install.folder_.string());
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

const InstalledEffect& Install::require(const std::string& text) const {
    const InstalledEffect* effect = find(text);
    if (!effect) {
        throw ToolError(ExitCode::UnknownEffect, "no effect '" + text + "' in " + folder_.string() +
                                                     "; `vemo-sfx list` shows what is there");
    }
    return *effect;
}

} // namespace vemo::tool
