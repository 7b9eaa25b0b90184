#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <sfx/export.h>
#include <sfx/model/CustomAudioParameters.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>

namespace vemo::audio {

/// Every operation on the players of the process. The order of the virtual operations is part of
/// the interface. Any thread may call any of them; none waits for a reload or a decode.
///
/// An operation by player id throws std::out_of_range "invalid unordered_map<K, T> key" for an id
/// that no player has, or has any more.
class SFX_EXPORT SfxPlayerControllerInterface {
public:
    virtual ~SfxPlayerControllerInterface() = default;

    /// Plays a user's audio file. The same parameters always play on the same player, which the
    /// first call makes; returns before the file is decoded. A file that cannot be decoded is
    /// reported by the mediator's soundEffectError. Throws vemo::sfx::CustomAudioException with
    /// the priority "error" for a file text that is no URL.
    virtual void play(const CustomAudioParameters& parameters) = 0;
    /// Plays every player whose record has this name or event id and returns the id of the last
    /// one. Without any, the text is read as a player id. A text that is neither is logged, and
    /// the answer is 0. Throws std::out_of_range for a number that no player has.
    ///
    /// With no player at all, this also starts to load the records, and does not wait for it.
    virtual std::uint64_t play(const std::string& request) = 0;
    virtual bool play(std::uint64_t playerId) = 0;
    /// Stops every player, as SfxPlayerInterface::Stop(bool) does.
    virtual void stop(bool isUrgent) = 0;
    /// Stops the players of exactly these parameters; none is fine.
    virtual void stop(const CustomAudioParameters& parameters) = 0;
    /// Stops every player whose record has this name or event id; without any, the player whose
    /// id the text is. A text that is neither is logged. Throws std::out_of_range for a number
    /// that no player has.
    virtual void stop(const std::string& request) = 0;
    /// Reaches a player that was removed with its record while it sounded, too, as every stop
    /// does.
    virtual void stop(std::uint64_t playerId) = 0;
    virtual void stop() = 0;
    /// A literal is a request by text; without this it would turn into a bool and stop everything.
    void stop(const char* request) { stop(std::string(request)); }

    /// As SfxPlayerInterface has them.
    virtual float GetDuration(std::uint64_t playerId) = 0;
    virtual void SetOutputDevice(std::uint64_t playerId, const wchar_t* deviceId) = 0;
    virtual void SetVolume(std::uint64_t playerId, float volume) = 0;
    virtual float Volume(std::uint64_t playerId) = 0;
    virtual void SetReverb(std::uint64_t playerId, float reverb) = 0;
    virtual void SetPan(std::uint64_t playerId, float pan) = 0;
    virtual void SetSfxPath(std::uint64_t playerId, const std::string& path) = 0;
    virtual bool Done(std::uint64_t playerId) = 0;
    /// Blocks the caller until the player is done.
    virtual void WaitUntilDone(std::uint64_t playerId) = 0;
    virtual bool PlaysSameSfx(std::uint64_t playerId, const sfx::SfxDto& record) = 0;
    /// See SfxPlayerInterface::SfxData() for how long the record may be read.
    virtual std::optional<const sfx::SfxDto*> SfxData(std::uint64_t playerId) = 0;

    /// The newest player whose record has this event id. The pointer is good until the record is
    /// gone from the repository and the controller's thread has returned to its event loop; keep
    /// the id, not the pointer.
    virtual std::optional<SfxPlayerInterface*> GetPlayer(const std::string& eventId) = 0;
    virtual std::optional<SfxPlayerInterface*> GetPlayer(std::uint64_t playerId) = 0;

    /// Decodes a file ahead of its first use: an enciphered effect if the path ends in ".sfx",
    /// else a user's audio file, given as the text of a URL ("file:///..."). It stays until the
    /// process ends.
    virtual void PreloadFile(const std::string& path) = 0;
    /// Fades the player of this event to `volume` in `duration` milliseconds; an unknown event is
    /// passed over.
    virtual void FadeTo(std::string eventId, float volume, float duration) = 0;
};

} // namespace vemo::audio
