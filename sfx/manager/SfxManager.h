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
/// GetSfxPlayer(), so there is a controller before the first AddPlayer(SfxDto), and the controller
/// has loaded the effects' files.
///
/// Used on one thread at a time, any thread. A player id that AddPlayer() never returned throws
/// std::out_of_range that names the id from Play, Stop and SetPlayerOutputPath, and leaves an empty
/// entry behind, which everything else passes over.
///
/// The fades of Play() and SetAmbient() move the player's volume, which counts when it plays the
/// next time; what is heard of a start and a stop are the record's own fadeIn and fadeOut. They
/// run on threads of their own: on the controller's thread a player with a fade starts once that
/// thread is back in its event loop, and a stop before that finds nothing to stop.
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
    /// The id of the player whose record is equal, its effectPath included, else that of a new one.
    /// -1 for an effect that the install does not list among those of the record's type. Throws as
    /// GetSfxPlayer() does; an id is used up then.
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
    /// As SfxPlayerInterface::SfxData() hands it out. Throws std::out_of_range "invalid map<K, T>
    /// key", and SfxException when the controller has removed the player.
    const sfx::SfxDto& GetSfxDto(int playerId) const;

    /// Plays, and moves the player's volume to 1 in `fadeMs` milliseconds, in steps of 20 ms; plays
    /// at once for 0 or less. An id of -1 is ignored. Throws SfxException when the controller has
    /// removed the player and there is a fade.
    void Play(int playerId, int fadeMs);
    /// Stops at once, and sets the player's volume to 1; the fade time is ignored. Meant so.
    void Stop(int playerId, int fadeMs);
    /// Makes this player the ambient one: stops the former as Stop() does and plays this one with
    /// a fade of 1000 ms. The same one again changes nothing, even if it was stopped.
    void SetAmbient(int playerId);
    /// An unknown path changes nothing.
    void SetPlayerOutputPath(int playerId, int pathId);
    void StopAllEffects();
    void StopAmbient();
    /// Stops every player whose record is AMBIENT.
    void StopAmbientEffects();
    /// Stops every player whose record is PRIMARY.
    void StopPrimaryEffects();
    /// Waits for each player's fade and then for the player, as its own WaitUntilDone() waits: one
    /// of the controller's is waited for on the controller's thread only.
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
