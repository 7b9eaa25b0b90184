#include "Install.h"

#include <algorithm>
#include <exception>
#include <system_error>

#include <QStandardPaths>

#include "DataRoot.h"
#include "PathText.h"
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

bool sameLetters(const std::string& a, const std::string& b) {
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) == 0;
}

} // namespace

fs::path belowDataRoot() {
    return fs::path("vemo_data") / "sfx";
}

fs::path defaultInstall() {
    const QStringList roots =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    if (roots.size() < 2) {
        refuse("no install: XDG_DATA_DIRS names no folder");
    }
    return PathFromUtf8(roots[1].toStdString()) / belowDataRoot();
}

fs::path locateInstall(const std::string& folder) {
    if (folder.empty()) {
        fs::path found = defaultInstall();
        if (!hasManifest(found)) {
            refuse("no install in " + pathText(found) + ": it has no manifest.json");
        }
        return found;
    }
    const fs::path named = PathFromUtf8(folder);
    for (const fs::path& candidate : {named, named / belowDataRoot()}) {
        if (hasManifest(candidate)) {
            return fs::canonical(candidate);
        }
    }
    refuse("no install in " + folder +
           ": neither manifest.json nor vemo_data/sfx/manifest.json is there");
}

Install Install::open(const std::string& folder) {
    return open(locateInstall(folder));
}

Install Install::open(const fs::path& folder) {
    Install install;
    install.folder_ = folder;
    try {
        install.effects_ = readCatalogue(folder);
    } catch (const ToolError&) {
        throw;
    } catch (const std::exception& error) {
        refuse(pathText(folder) + ": " + error.what());
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
        throw ToolError(ExitCode::UnknownEffect, "no effect '" + text + "' in " +
                                                     pathText(folder_) +
                                                     "; `vemo-sfx list` shows what is there");
    }
    return *effect;
}

std::string installHelp() {
    return std::string("Install folder (the one with manifest.json) or the data root above its "
                       "vemo_data/sfx [default: ") +
           DEFAULT_INSTALL + "]";
}

} // namespace vemo::tool
