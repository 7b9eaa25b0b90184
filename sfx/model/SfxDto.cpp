#include <sfx/model/SfxDto.h>

#include <ostream>
#include <stdexcept>
#include <utility>

#include "SongIntervalCast.h"

namespace vemo::audio::sfx {

namespace {

using OwnedIntervals = std::list<std::unique_ptr<IntervalInterface>>;

void AppendClone(OwnedIntervals& to, const IntervalInterface* interval) {
    if (const SongInterval* song = AsSongInterval(interval)) {
        to.push_back(std::make_unique<SongInterval>(*song));
    }
}

// Takes a list of plain and of owning pointers alike.
template <typename Intervals>
OwnedIntervals Clones(const Intervals& intervals) {
    OwnedIntervals clones;
    for (const auto& interval : intervals) {
        AppendClone(clones, std::to_address(interval));
    }
    return clones;
}

} // namespace

SfxDto::SfxDto(std::string name, std::string outputPath, std::string effectId,
               std::string effectPath, std::list<IntervalInterface*> activeIntervals, SfxType type,
               int effectIdIndex, int repeats, unsigned short fadeIn, unsigned short fadeOut,
               float volume, float reverb, float pan, const std::string& eventId)
    : name_(std::move(name)),
      outputPath_(std::move(outputPath)),
      effectId_(std::move(effectId)),
      effectPath_(std::move(effectPath)),
      eventId_(eventId),
      activeIntervals_(Clones(activeIntervals)),
      type_(type),
      effectIdIndex_(effectIdIndex),
      repeats_(repeats),
      fadeIn_(fadeIn),
      fadeOut_(fadeOut),
      volume_(volume),
      reverb_(reverb),
      pan_(pan) {}

SfxDto::SfxDto(const SfxDto& other)
    : name_(other.name_),
      outputPath_(other.outputPath_),
      effectId_(other.effectId_),
      effectPath_(other.effectPath_),
      eventId_(other.eventId_),
      activeIntervals_(Clones(other.activeIntervals_)),
      type_(other.type_),
      effectIdIndex_(other.effectIdIndex_),
      repeats_(other.repeats_),
      fadeIn_(other.fadeIn_),
      fadeOut_(other.fadeOut_),
      volume_(other.volume_),
      reverb_(other.reverb_),
      pan_(other.pan_) {}

SfxDto::SfxDto(SfxDto&& other) noexcept = default;

SfxDto& SfxDto::operator=(const SfxDto& other) {
    if (this != &other) {
        SfxDto copy(other);
        // Meant: a record keeps its own event when it takes over another's effect.
        copy.eventId_.swap(eventId_);
        *this = std::move(copy);
    }
    return *this;
}

SfxDto& SfxDto::operator=(SfxDto&& other) noexcept = default;
SfxDto::~SfxDto() = default;

const std::string& SfxDto::name() const {
    return name_;
}
const std::string& SfxDto::outputPath() const {
    return outputPath_;
}
const std::string& SfxDto::effectId() const {
    return effectId_;
}
const std::string& SfxDto::effectPath() const {
    return effectPath_;
}
const std::string& SfxDto::eventId() const {
    return eventId_;
}
const std::list<std::unique_ptr<IntervalInterface>>& SfxDto::activeIntervals() const {
    return activeIntervals_;
}
SfxType SfxDto::type() const {
    return type_;
}
int SfxDto::effectIdIndex() const {
    return effectIdIndex_;
}
int SfxDto::repeats() const {
    return repeats_;
}
unsigned short SfxDto::fadeIn() const {
    return fadeIn_;
}
unsigned short SfxDto::fadeOut() const {
    return fadeOut_;
}
float SfxDto::volume() const {
    return volume_;
}
float SfxDto::reverb() const {
    return reverb_;
}
float SfxDto::pan() const {
    return pan_;
}

void SfxDto::setName(const std::string& name) {
    name_ = name;
}
void SfxDto::setOutputPath(const std::string& outputPath) {
    outputPath_ = outputPath;
}
void SfxDto::setEffectId(const std::string& effectId) {
    effectId_ = effectId;
}
void SfxDto::setEffectPath(const std::string& effectPath) {
    effectPath_ = effectPath;
}
void SfxDto::setEventId(const std::string& eventId) {
    eventId_ = eventId;
}
void SfxDto::setType(SfxType type) {
    type_ = type;
}
void SfxDto::setEffectIdIndex(int effectIdIndex) {
    effectIdIndex_ = effectIdIndex;
}
void SfxDto::setRepeats(int repeats) {
    repeats_ = repeats;
}
void SfxDto::setFadeIn(unsigned short fadeIn) {
    fadeIn_ = fadeIn;
}
void SfxDto::setFadeOut(unsigned short fadeOut) {
    fadeOut_ = fadeOut;
}
void SfxDto::setVolume(float volume) {
    volume_ = volume;
}
void SfxDto::setReverb(float reverb) {
    reverb_ = reverb;
}
void SfxDto::setPan(float pan) {
    pan_ = pan;
}

void SfxDto::addActiveInterval(const IntervalInterface& interval) {
    AppendClone(activeIntervals_, &interval);
}

bool SfxDto::isActiveInterval(const std::string& index, unsigned int start, unsigned int end) {
    for (const auto& interval : activeIntervals_) {
        if (interval->type() == IntervalType::SEQUENCE) {
            throw std::runtime_error("IntervalType::SEQUENCE not implemented yet");
        }
        const SongInterval* song = AsSongInterval(interval.get());
        if (song != nullptr && song->index() == index && start >= song->start() &&
            end <= song->end()) {
            return true;
        }
    }
    return false;
}

SfxDto::SfxDtoBuilder SfxDto::builder() {
    return {};
}

std::ostream& operator<<(std::ostream& out, const SfxDto& dto) {
    out << "SfxDto{'name': '" << dto.name() << "', 'outputPath': '" << dto.outputPath()
        << "', 'effectId': '" << dto.effectId() << "', 'effectPath': '" << dto.effectPath()
        << "', 'activeIntervals': ";
    for (const auto& interval : dto.activeIntervals()) {
        // Meant: the last interval keeps its trailing comma too.
        if (const SongInterval* song = AsSongInterval(interval.get())) {
            out << *song << ", ";
        }
    }
    return out << ", 'type': " << dto.type() << ", 'effectIdIndex': " << dto.effectIdIndex()
               << ", 'repeats': " << dto.repeats() << ", 'fadeIn': " << dto.fadeIn()
               << ", 'fadeOut': " << dto.fadeOut() << ", 'volume': " << dto.volume()
               << ", 'reverb': " << dto.reverb() << ", 'pan': " << dto.pan() << "}";
}

} // namespace vemo::audio::sfx
