#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QThreadPool>

#include <sfx/catalogue/SfxManifest.h>
#include <sfx/control/PlayerTable.h>
#include <sfx/model/CustomAudioParameters.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerImpl.h>
#include <sfx/source/SfxFileInterface.h>
#include <sfx/source/UserAudioFile.h>

namespace vemo::audio {

/// The players and the decoded files of a controller. Any thread: every operation takes the lock
/// for itself, for as long as it works on the maps; nothing is decoded, waited for or announced
/// under it.
///
/// Who got a player from here may use it for as long as the pointer lives, whether or not the
/// player is still in the store. A player that is removed while it sounds plays to its end, and
/// stops still reach it.
class PlayerStore {
public:
    /// What the store needs of its controller. Called with the lock held, from any thread.
    struct Wiring {
        /// Gives an object that was made here to the controller's thread.
        std::function<void(QObject&)> adopt;
        /// Connects the isReady of a file, before it is decoded.
        std::function<void(QObject& file)> connectFile;
        std::function<void(SfxPlayerImpl&)> connectPlayer;
        /// For users' files; on the decode thread, without the lock.
        UserAudioFile::FailureHandler userFileFailed;
    };

    /// Throws what SfxManifest throws.
    PlayerStore(std::shared_ptr<QThreadPool> playbackPool, Wiring wiring);

    using Player = std::shared_ptr<SfxPlayerImpl>;

    bool Empty() const;
    bool Holds(std::uint64_t id) const;
    /// Throws std::out_of_range "invalid unordered_map<K, T> key".
    Player At(std::uint64_t id) const;
    /// As At(), but finds also a player that was removed and still sounds.
    Player AtOrSounding(std::uint64_t id) const;
    /// The player that represents an event; nullptr if none does.
    Player OfEvent(const std::string& eventId) const;
    /// Ids and players whose record meets `holds`, oldest first.
    using Predicate = std::function<bool(const sfx::SfxDto&)>;
    std::vector<PlayerEntry> Matching(const Predicate& holds) const;
    /// As Matching(), with those that were removed and still sound.
    std::vector<Player> MatchingOrSounding(const Predicate& holds) const;
    std::shared_ptr<SfxFileInterface> File(const std::string& key) const;

    /// Brings the store in line with one record. Throws std::bad_optional_access when a known
    /// player lacks its file and the catalogue does not have it.
    void Load(sfx::SfxDto record);
    /// Removes the players that no record asks for, all but the oldest of those that share event
    /// and effect, and the installed effects' files that no record uses.
    void Prune(const std::list<sfx::SfxDto>& records);
    enum class Made { Not, WithNewFile, WithKnownFile };
    /// A player for a proxy, under its id, unless the id is taken.
    Made Create(std::uint64_t id, const sfx::SfxDto& record);
    /// The players of these parameters, made if there are none yet; a user's file that could not
    /// be decoded is tried again. Throws CustomAudioException when there can be no such file.
    std::vector<Player> Custom(const CustomAudioParameters& parameters);
    /// False if the text cannot be that of a user's file.
    bool Preload(const std::string& path);

private:
    using File_ = std::shared_ptr<SfxFileInterface>;
    /// A removed player, which is there for as long as it sounds.
    struct Removed {
        std::uint64_t id;
        std::weak_ptr<SfxPlayerImpl> player;
    };

    PlayerEntry& AddPlayer_(std::uint64_t id, const sfx::SfxDto& record);
    File_ AddEffectFile_(const std::string& key, const std::string& path, bool connected);
    File_ UserFile_(const std::string& url);
    File_ FindFile_(const std::string& key) const;
    void Reload_(PlayerEntry& known, const sfx::SfxDto& record);
    void GiveFile_(PlayerEntry& entry, const File_& file) const;
    PlayerEntry& CreateCustom_(const CustomAudioParameters& parameters);
    void Remember_(const std::vector<PlayerEntry>& removed);
    /// Objects may be dropped on any thread and are destroyed on their own, so that what runs
    /// there never sees one go.
    static void DeleteLater_(QObject* object) { object->deleteLater(); }

    mutable std::mutex mutex_;
    Wiring wiring_;
    std::shared_ptr<QThreadPool> playbackPool_;
    vemo::sfx::SfxManifest manifest_;
    std::unordered_map<std::string, File_> files_;
    mutable PlayerTable players_;
    std::unordered_map<std::string, std::uint64_t> playerIdsByEventId_;
    std::vector<Removed> removed_;
};

} // namespace vemo::audio
