#pragma once

#include <sfx/model/SongInterval.h>

namespace vemo::audio {

/// `interval` as the song interval it says to be; null for an absent interval, for one of another
/// kind, and for a host's own class that only claims to be a SONG.
inline const SongInterval* AsSongInterval(const IntervalInterface* interval) {
    // IntervalInterface::type() is not const, but asking for the kind changes nothing.
    if (interval == nullptr ||
        const_cast<IntervalInterface*>(interval)->type() != IntervalType::SONG) {
        return nullptr;
    }
    return dynamic_cast<const SongInterval*>(interval);
}

} // namespace vemo::audio
