#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <sfx/player/SfxPlayerImpl.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

/// A player under its id, with the file it was given.
struct PlayerEntry {
    std::uint64_t id = 0;
    std::shared_ptr<SfxPlayerImpl> player;
    std::shared_ptr<SfxFileInterface> file;
};

/// Players by id, walked in the order in which they were added, oldest first. Look-ups, inserting
/// and removing take constant time. Not synchronised.
class PlayerTable {
public:
    /// nullptr if there is none.
    PlayerEntry* Find(std::uint64_t id) {
        const auto found = byId_.find(id);
        return found == byId_.end() ? nullptr : &*found->second;
    }
    /// An id that is taken keeps its player.
    PlayerEntry& Insert(PlayerEntry entry) {
        if (PlayerEntry* known = Find(entry.id))
            return *known;
        const auto id = entry.id;
        byId_.emplace(id, entries_.insert(entries_.end(), std::move(entry)));
        return entries_.back();
    }
    /// Takes out every entry for which `leaves` holds, walking from the oldest.
    template <typename Predicate>
    std::vector<PlayerEntry> Extract(const Predicate& leaves) {
        std::vector<PlayerEntry> extracted;
        for (auto entry = entries_.begin(); entry != entries_.end();) {
            if (!leaves(*entry)) {
                ++entry;
                continue;
            }
            byId_.erase(entry->id);
            extracted.push_back(std::move(*entry));
            entry = entries_.erase(entry);
        }
        return extracted;
    }

    bool Empty() const { return entries_.empty(); }
    auto begin() { return entries_.begin(); }
    auto end() { return entries_.end(); }

private:
    std::list<PlayerEntry> entries_;
    std::unordered_map<std::uint64_t, std::list<PlayerEntry>::iterator> byId_;
};

} // namespace vemo::audio
