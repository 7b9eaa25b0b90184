#pragma once

#include <functional>
#include <map>
#include <memory>

#include <sfx/catalogue/SfxVector.h>
#include <sfx/export.h>
#include <sfx/manager/AudioPath.h>
#include <sfx/manager/AudioPathManager.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>
#include <vemo_core/DataVector.h>

namespace vemo::audio {

class ManagedSfxPlayer;

/// Players by small numbers, with one ambient effect at a time, named output paths and the lists
/// of what is installed. The older front end of the library: it makes its players through
/// GetSfxPlayer(), so there is a controller before the first AddPlayer(SfxDto), which loads the
/// effects' files.
///
/// Used on one thread at a time. A player id that AddPlayer() never returned throws
/// std::out_of_range that names the id from Play, Stop and SetPlayerOutputPath, and leaves an empty
/// entry behind, which everything else passes over.
///
/// Fades change the volume that a record plays with the next time; what sounds keeps its volume.
class SFX_EXPORT SfxManager {
public:
    /// Fills both lists from the install. A fault is written to standard output, and the manager
    /// has what was loaded until then.
    SfxManager();
    SfxManager(const SfxManager&) = delete;
    SfxManager& operator=(const SfxManager&) = delete;
    ~SfxManager();

    /// Returns the path's id, from 1000 on. A name that was added before now means this path.
    int AddPath(const AudioPath& path);
    /// Returns the player's id, from 0 on.
    int AddPlayer(std::unique_ptr<SfxPlayerInterface> player);
    /// The id of the player that plays the same effect already, else that of a new one. -1 for an
    /// effect that the install does not have. Throws as GetSfxPlayer() does.
    int AddPlayer(sfx::SfxDto record);
    /// Calls `visit` with each player's id, ascending. Throws std::bad_function_call for an empty
    /// function, if there is any player.
    void ForEachPlayer(const std::function<void(int)>& visit);

    /// Ids and full paths of the installed primary effects. Throws std::runtime_error as
    /// SfxManifest does when it has to be filled and cannot.
    sfx::SfxVector& GetSfxList();
    /// Ids and full paths of the installed ambient effects; an empty list is filled again by every
    /// call.
    sfx::SfxVector& GetAmbientList();
    /// The id of the path of that name. An unknown name is entered with id 0.
    int GetPathIdType(core::DataVector name);
    const AudioPathManager& GetPathManager() const;
    /// Throws std::out_of_range "invalid map<K, T> key".
    const sfx::SfxDto& GetSfxDto(int playerId) const;

    /// Plays with a fade-in of `fadeMs` milliseconds. An id of -1 is ignored.
    void Play(int playerId, int fadeMs);
    /// Stops at once; the fade time is ignored. Meant so.
    void Stop(int playerId, int fadeMs);
    /// Makes this player the ambient one: the former is stopped at once, this one fades in over
    /// 1000 ms. The same one again changes nothing, even if it was stopped.
    void SetAmbient(int playerId);
    /// An unknown path changes nothing.
    void SetPlayerOutputPath(int playerId, int pathId);
    void StopAllEffects();
    void StopAmbient();
    /// Stops every player whose record is AMBIENT.
    void StopAmbientEffects();
    /// Stops every player whose record is PRIMARY.
    void StopPrimaryEffects();
    /// Waits for each player in turn, as its own WaitUntilDone() waits, and for its fade.
    void WaitForAllToComplete();

private:
    using Players = std::map<int, std::unique_ptr<ManagedSfxPlayer>>;

    /// False without a manifest.
    bool Populate_(SfxType type);
    ManagedSfxPlayer& Player_(int playerId);
    void ForEach_(const std::function<void(int, ManagedSfxPlayer&)>& visit) const;
    void StopType_(SfxType type);

    int currentAmbient_ = 0;
    AudioPathManager pathManager_;
    int nextPlayerId_ = 0;
    Players players_;
    sfx::SfxVector effects_;
    sfx::SfxVector ambients_;
    bool listLoaded_ = false;
    bool ambientActive_ = false;
    std::map<core::DataVector, int> pathIds_;
};

} // namespace vemo::audio
