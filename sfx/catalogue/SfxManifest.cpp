#include <sfx/catalogue/SfxManifest.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "ManifestDocument.h"
#include "Utf8Path.h"

namespace vemo::sfx {

namespace {

bool FileExists(const std::string& path) {
    // A path that cannot even be asked about is as good as missing.
    std::error_code error;
    return std::filesystem::is_regular_file(PathFromUtf8(path), error);
}

} // namespace

SfxManifest::SfxManifest() {
    loadFromFile_(audio::AMBIENT);
    loadFromFile_(audio::PRIMARY);
}

SfxManifest::SfxManifest(const SfxManifest& other) = default;
SfxManifest& SfxManifest::operator=(const SfxManifest& other) = default;
SfxManifest::~SfxManifest() = default;

void SfxManifest::loadFromFile_(audio::SfxType type) {
    const std::optional<ManifestDocument> manifest = ManifestDocument::OpenInstalled();
    if (!manifest) {
        return;
    }
    audio::sfx::SfxVector& effects = type == audio::PRIMARY ? primaryEffects_ : ambientEffects_;
    Slots& slots = type == audio::PRIMARY ? primarySlots_ : ambientSlots_;
    manifest->ResizeToDeclaredCount(type, effects);
    manifest->RequireSupportedVersion();

    std::size_t slot = 0;
    std::string missing;
    manifest->ForEachEffect(type, [&](const ManifestEffect& effect) {
        const std::string id = effect.Id();
        const std::string name = effect.Name();
        const std::string path = effect.FullPath();
        if (!FileExists(path)) {
            missing += "\tMissing: " + path + "\n";
            return;
        }
        effects.Add(id.c_str());
        effects.SetPath(slot, path.c_str());
        slots.try_emplace(id, slot);
        displayNames_.try_emplace(id, name);
        ++slot;
    });
    if (!missing.empty()) {
        throw std::runtime_error(
            "The SFX manifest failed to find certain files, indicating the SFX install has failed "
            "or was corrupted. Please contact VEMO. The following errors were found:\n" +
            missing);
    }
}

audio::sfx::SfxVector SfxManifest::SoundEffects() const {
    return primaryEffects_;
}
audio::sfx::SfxVector SfxManifest::AmbientEffects() const {
    return ambientEffects_;
}

bool SfxManifest::HasEffectId(const std::string& id) const {
    return type(id).has_value();
}

std::optional<std::string> SfxManifest::path(const std::string& id) const {
    if (const auto primary = primarySlots_.find(id); primary != primarySlots_.end()) {
        return primaryEffects_.GetPath(primary->second);
    }
    if (const auto ambient = ambientSlots_.find(id); ambient != ambientSlots_.end()) {
        return ambientEffects_.GetPath(ambient->second);
    }
    return std::nullopt;
}

std::optional<audio::SfxType> SfxManifest::type(const std::string& id) const {
    if (primarySlots_.contains(id)) {
        return audio::PRIMARY;
    }
    if (ambientSlots_.contains(id)) {
        return audio::AMBIENT;
    }
    return std::nullopt;
}

std::optional<std::string> SfxManifest::displayName(const std::string& id) const {
    const auto name = displayNames_.find(id);
    return name == displayNames_.end() ? std::nullopt : std::optional(name->second);
}

} // namespace vemo::sfx
