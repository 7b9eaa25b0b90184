#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>

#include <sfx/catalogue/SfxVector.h>
#include <sfx/export.h>
#include <sfx/model/SfxType.h>

namespace vemo::sfx {

/// The effects that the installer placed on this machine: "vemo_data/sfx/manifest.json" below the
/// second generic data location of the platform. Read once, when constructed; ids are compared
/// byte by byte, and of several effects with one id the first counts. Look-ups take the same time
/// however many effects there are.
///
/// Paths and names are UTF-8. Any thread may ask a complete catalogue; assigning to it is not
/// synchronised.
class SFX_EXPORT SfxManifest {
public:
    /// Without a manifest, or with fewer than two generic data locations, the catalogue is empty
    /// and standard output says so, once for each of the two lists.
    /// Throws std::runtime_error, naming the fault, for a manifest that cannot be read or is not
    /// supported, and for one that lists files which are not there (all of them are named).
    /// Throws std::invalid_argument "Size is too large" if a declared count is -1.
    SfxManifest();
    SfxManifest(const SfxManifest& other);
    SfxManifest& operator=(const SfxManifest& other);
    virtual ~SfxManifest();

    /// Ids and full paths of the primary effects, in the order of the manifest.
    audio::sfx::SfxVector SoundEffects() const;
    /// Ids and full paths of the ambient effects, in the order of the manifest.
    audio::sfx::SfxVector AmbientEffects() const;
    bool HasEffectId(const std::string& id) const;
    /// Full path of the effect's file. A primary effect goes before an ambient one of the same id.
    std::optional<std::string> path(const std::string& id) const;
    /// PRIMARY or AMBIENT. A primary effect goes before an ambient one of the same id.
    std::optional<audio::SfxType> type(const std::string& id) const;
    /// The name under which the first effect of that id is listed, the ambient ones going first.
    std::optional<std::string> displayName(const std::string& id) const;

private:
    using Slots = std::unordered_map<std::string, std::size_t>;

    void loadFromFile_(audio::SfxType type);

    std::unordered_map<std::string, std::string> displayNames_;
    audio::sfx::SfxVector ambientEffects_;
    audio::sfx::SfxVector primaryEffects_;
    // First slot of every id in its list.
    Slots ambientSlots_;
    Slots primarySlots_;
};

} // namespace vemo::sfx
