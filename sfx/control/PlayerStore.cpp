#include <sfx/control/PlayerStore.h>

#include <algorithm>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include <sfx/control/PlayerId.h>
#include <sfx/source/DecodeState.h>
#include <sfx/source/EncryptedVorbisFile.h>

namespace vemo::audio {

namespace {

bool DecodeFailed(const SfxFileInterface& file) {
    const auto* decode = dynamic_cast<const DecodeState*>(&file);
    return decode != nullptr && decode->stage() == DecodeState::Stage::Failed;
}

bool IsEffectFile(const std::string& key) {
    return key.size() >= 4 && key.ends_with(".sfx");
}

std::string EventAndEffect(const sfx::SfxDto& record) {
    std::string key = record.eventId();
    key += '\0';
    key += record.effectId();
    return key;
}

} // namespace

PlayerStore::PlayerStore(std::shared_ptr<QThreadPool> playbackPool, Wiring wiring)
    : wiring_(std::move(wiring)), playbackPool_(std::move(playbackPool)) {}

bool PlayerStore::Empty() const {
    const std::lock_guard lock(mutex_);
    return players_.Empty();
}

bool PlayerStore::Holds(std::uint64_t id) const {
    const std::lock_guard lock(mutex_);
    return players_.Find(id) != nullptr;
}

PlayerStore::Player PlayerStore::At(std::uint64_t id) const {
    const std::lock_guard lock(mutex_);
    const PlayerEntry* entry = players_.Find(id);
    if (entry == nullptr)
        throw std::out_of_range("invalid unordered_map<K, T> key");
    return entry->player;
}

PlayerStore::Player PlayerStore::AtOrSounding(std::uint64_t id) const {
    {
        const std::lock_guard lock(mutex_);
        for (const Removed& removed : removed_) {
            if (auto player = removed.id == id ? removed.player.lock() : nullptr)
                return player;
        }
    }
    return At(id);
}

PlayerStore::Player PlayerStore::OfEvent(const std::string& eventId) const {
    const std::lock_guard lock(mutex_);
    const auto id = playerIdsByEventId_.find(eventId);
    const PlayerEntry* entry =
        id == playerIdsByEventId_.end() ? nullptr : players_.Find(id->second);
    return entry == nullptr ? nullptr : entry->player;
}

std::vector<PlayerEntry> PlayerStore::Matching(const Predicate& holds) const {
    std::vector<PlayerEntry> matching;
    const std::lock_guard lock(mutex_);
    for (const PlayerEntry& entry : players_) {
        if (holds(*entry.player->Record()))
            matching.push_back(entry);
    }
    return matching;
}

std::vector<PlayerStore::Player> PlayerStore::MatchingOrSounding(const Predicate& holds) const {
    std::vector<Player> matching;
    for (const PlayerEntry& entry : Matching(holds))
        matching.push_back(entry.player);
    const std::lock_guard lock(mutex_);
    for (const Removed& removed : removed_) {
        const auto player = removed.player.lock();
        if (player && holds(*player->Record()))
            matching.push_back(player);
    }
    return matching;
}

PlayerStore::File_ PlayerStore::FindFile_(const std::string& key) const {
    const auto found = files_.find(key);
    return found == files_.end() ? nullptr : found->second;
}

std::shared_ptr<SfxFileInterface> PlayerStore::File(const std::string& key) const {
    const std::lock_guard lock(mutex_);
    return FindFile_(key);
}

PlayerEntry& PlayerStore::AddPlayer_(std::uint64_t id, const sfx::SfxDto& record) {
    const Player player(
        new SfxPlayerImpl(record, playbackPool_, std::make_shared<QThreadPool>(), nullptr),
        DeleteLater_);
    wiring_.adopt(*player);
    return players_.Insert({id, player, nullptr});
}

PlayerStore::File_ PlayerStore::AddEffectFile_(const std::string& key, const std::string& path,
                                               bool connected) {
    const auto prepare = [this, connected](EncryptedVorbisFile& file) {
        wiring_.adopt(file);
        if (connected)
            wiring_.connectFile(file);
    };
    return files_[key] = std::shared_ptr<EncryptedVorbisFile>(
               new EncryptedVorbisFile(path, prepare), DeleteLater_);
}

void PlayerStore::GiveFile_(PlayerEntry& entry, const File_& file) const {
    entry.file = file;
    entry.player->SetFile(file);
}

void PlayerStore::Load(sfx::SfxDto record) {
    const std::lock_guard lock(mutex_);
    const std::string& effectId = record.effectId();
    const auto knownId = playerIdsByEventId_.find(record.eventId());
    PlayerEntry* known =
        knownId == playerIdsByEventId_.end() ? nullptr : players_.Find(knownId->second);
    if (known != nullptr && known->player->Record()->effectId() == effectId) {
        Reload_(*known, record);
        return;
    }
    const std::uint64_t id = NextPlayerId();
    const auto path = manifest_.path(effectId);
    File_ file = FindFile_(effectId);
    if (path) {
        record.setEffectPath(*path);
        const bool installed = record.type() == AMBIENT || record.type() == PRIMARY;
        // A proxy looks for its effect in another place than the catalogue, and may have left a
        // file here that never plays.
        if (installed && (file == nullptr || DecodeFailed(*file)))
            file = AddEffectFile_(effectId, *path, true);
    }
    PlayerEntry& entry = AddPlayer_(id, record);
    playerIdsByEventId_.insert_or_assign(record.eventId(), id);
    if (file != nullptr) {
        GiveFile_(entry, file);
        wiring_.connectPlayer(*entry.player);
    }
}

void PlayerStore::Reload_(PlayerEntry& known, const sfx::SfxDto& record) {
    const std::string& effectId = record.effectId();
    File_ file = FindFile_(effectId);
    const auto path = manifest_.path(effectId);
    if (file == nullptr || (path && DecodeFailed(*file)))
        file = AddEffectFile_(effectId, path.value(), true);
    if (known.file != file)
        GiveFile_(known, file);
    known.player->ReplaceSfxData(record);
}

void PlayerStore::Prune(const std::list<sfx::SfxDto>& records) {
    std::unordered_set<std::string> wanted;
    std::unordered_set<std::string> wantedEffects;
    for (const sfx::SfxDto& record : records) {
        wanted.insert(EventAndEffect(record));
        wantedEffects.insert(record.effectId());
    }

    std::unordered_map<std::string, Player> keptByEvent;
    // Destroyed without the lock.
    std::vector<PlayerEntry> removed;
    std::vector<File_> removedFiles;
    const std::lock_guard lock(mutex_);
    removed = players_.Extract([&](const PlayerEntry& entry) {
        const auto record = entry.player->Record();
        return !wanted.contains(EventAndEffect(*record)) ||
               !keptByEvent.emplace(record->eventId(), entry.player).second;
    });
    for (const PlayerEntry& entry : removed) {
        const auto record = entry.player->Record();
        const auto kept = keptByEvent.find(record->eventId());
        // The newer player had the record as it is now; the older one goes on in its place.
        if (kept != keptByEvent.end() && kept->second->Record()->effectId() == record->effectId())
            kept->second->ReplaceSfxData(*record);
        // The event goes also when another player carries it, which the next load then does not
        // find. Meant so.
        playerIdsByEventId_.erase(record->eventId());
    }
    Remember_(removed);
    // Users' files stay, whatever the records say.
    for (auto file = files_.begin(); file != files_.end();) {
        if (wantedEffects.contains(file->first) || !IsEffectFile(file->first)) {
            ++file;
            continue;
        }
        removedFiles.push_back(std::move(file->second));
        file = files_.erase(file);
    }
}

void PlayerStore::Remember_(const std::vector<PlayerEntry>& removed) {
    std::erase_if(removed_, [](const Removed& known) { return known.player.expired(); });
    for (const PlayerEntry& entry : removed)
        removed_.push_back({entry.id, entry.player});
}

PlayerStore::Made PlayerStore::Create(std::uint64_t id, const sfx::SfxDto& record) {
    const std::lock_guard lock(mutex_);
    if (players_.Find(id) != nullptr)
        return Made::Not;
    playerIdsByEventId_.insert_or_assign(record.eventId(), id);
    PlayerEntry& entry = AddPlayer_(id, record);
    if (const File_ known = FindFile_(record.effectId())) {
        GiveFile_(entry, known);
        return Made::WithKnownFile;
    }
    // The id itself is the path here, not the catalogue's path of it, and the file's isReady is
    // not announced: both meant so.
    if (record.type() == AMBIENT || record.type() == PRIMARY)
        GiveFile_(entry, AddEffectFile_(record.effectId(), record.effectId(), false));
    return Made::WithNewFile;
}

bool PlayerStore::Preload(const std::string& path) {
    const std::lock_guard lock(mutex_);
    if (!IsEffectFile(path))
        return UserFile_(path) != nullptr;
    if (FindFile_(path) == nullptr)
        AddEffectFile_(path, path, true);
    return true;
}

} // namespace vemo::audio
