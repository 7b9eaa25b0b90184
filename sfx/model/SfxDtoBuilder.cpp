#include <sfx/model/SfxDto.h>

#include <deque>
#include <mutex>

#include "SongIntervalCast.h"

namespace vemo::audio::sfx {

namespace {

// The builder never releases the intervals it makes, since copies of a builder share them. They
// live here, and the store is never destroyed, so that they stay reachable to the end.
SongInterval* KeepInterval(const SongInterval& interval) {
    struct Store {
        std::mutex mutex;
        std::deque<SongInterval> intervals;
    };
    static Store& store = *new Store;
    const std::lock_guard lock(store.mutex);
    return &store.intervals.emplace_back(interval.index(), interval.start(), interval.end());
}

} // namespace

SfxDto::SfxDtoBuilder::SfxDtoBuilder() = default;

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::name(const std::string& name) {
    name_ = name;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::outputPath(const std::string& outputPath) {
    outputPath_ = outputPath;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::effectId(const std::string& effectId) {
    effectId_ = effectId;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::effectPath(const std::string& effectPath) {
    effectPath_ = effectPath;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::eventId(const std::string& eventId) {
    eventId_ = eventId;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::addActiveInterval(const IntervalInterface& interval) {
    if (const SongInterval* song = AsSongInterval(&interval)) {
        activeIntervals_.push_back(KeepInterval(*song));
    }
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::type(SfxType type) {
    type_ = type;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::effectIdIndex(int effectIdIndex) {
    effectIdIndex_ = effectIdIndex;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::repeats(int repeats) {
    repeats_ = repeats;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::fadeIn(unsigned short fadeIn) {
    fadeIn_ = fadeIn;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::fadeOut(unsigned short fadeOut) {
    fadeOut_ = fadeOut;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::volume(float volume) {
    volume_ = volume;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::reverb(float reverb) {
    reverb_ = reverb;
    return *this;
}

SfxDto::SfxDtoBuilder& SfxDto::SfxDtoBuilder::pan(float pan) {
    pan_ = pan;
    return *this;
}

SfxDto SfxDto::SfxDtoBuilder::build() {
    const int repeats = type_ == AMBIENT ? -1 : repeats_;
    return {name_,
            outputPath_,
            effectId_,
            effectPath_,
            {activeIntervals_.begin(), activeIntervals_.end()},
            type_,
            effectIdIndex_,
            repeats,
            fadeIn_,
            fadeOut_,
            volume_,
            reverb_,
            pan_,
            eventId_};
}

// A NaN passes.
bool SfxDto::SfxDtoBuilder::valid() const {
    return !name_.empty() && !outputPath_.empty() && !effectId_.empty() && !effectPath_.empty() &&
           !activeIntervals_.empty() && effectIdIndex_ >= 0 && !(volume_ < 0.0F) &&
           !(reverb_ < 0.0F) && !(pan_ < 0.0F) && repeats_ >= -1;
}

} // namespace vemo::audio::sfx
