#pragma once

#include <compare>
#include <iosfwd>
#include <list>
#include <memory>
#include <string>

#include <sfx/export.h>
#include <sfx/model/IntervalInterface.h>
#include <sfx/model/SfxType.h>
#include <sfx/model/SongInterval.h>

namespace vemo::audio::sfx {

/// One sound effect: which file to play and how. A plain value: it takes no lock, so one record is
/// used by one thread at a time; different records may be used by different threads.
class SFX_EXPORT SfxDto {
public:
    class SfxDtoBuilder;

    /// `activeIntervals` stay the caller's: every SONG interval is cloned, others are dropped.
    SfxDto(std::string name, std::string outputPath, std::string effectId, std::string effectPath,
           std::list<IntervalInterface*> activeIntervals, SfxType type, int effectIdIndex,
           int repeats, unsigned short fadeIn, unsigned short fadeOut, float volume, float reverb,
           float pan, const std::string& eventId);
    SfxDto(const SfxDto& other);
    SfxDto(SfxDto&& other) noexcept;
    /// Copies everything except the event id, which stays the target's own.
    SfxDto& operator=(const SfxDto& other);
    SfxDto& operator=(SfxDto&& other) noexcept;
    ~SfxDto();

    /// Display name of the effect.
    const std::string& name() const;
    /// Name of the output path the effect plays on.
    const std::string& outputPath() const;
    /// Id in the install catalogue, or the user file's identifier.
    const std::string& effectId() const;
    /// Path of the audio file.
    const std::string& effectPath() const;
    /// Change-log event that carries this effect.
    const std::string& eventId() const;
    const std::list<std::unique_ptr<IntervalInterface>>& activeIntervals() const;
    SfxType type() const;
    /// Index of the effect within its catalogue list.
    int effectIdIndex() const;
    /// Repetitions after the first pass; -1 repeats without end.
    int repeats() const;
    /// Milliseconds.
    unsigned short fadeIn() const;
    /// Milliseconds.
    unsigned short fadeOut() const;
    /// Linear gain, 1.0 is unity.
    float volume() const;
    /// Gain of the echo, 0.0 is none.
    float reverb() const;
    /// 0.0 left, 0.5 centre, 1.0 right.
    float pan() const;

    void setName(const std::string& name);
    void setOutputPath(const std::string& outputPath);
    void setEffectId(const std::string& effectId);
    void setEffectPath(const std::string& effectPath);
    void setEventId(const std::string& eventId);
    void setType(SfxType type);
    void setEffectIdIndex(int effectIdIndex);
    void setRepeats(int repeats);
    void setFadeIn(unsigned short fadeIn);
    void setFadeOut(unsigned short fadeOut);
    void setVolume(float volume);
    void setReverb(float reverb);
    void setPan(float pan);

    /// Appends a clone of a SONG interval; an interval of another kind is dropped.
    void addActiveInterval(const IntervalInterface& interval);
    /// True if [start, end] of song `index` lies wholly inside one of the intervals.
    /// Throws std::runtime_error on reaching an interval of kind SEQUENCE.
    bool isActiveInterval(const std::string& index, unsigned int start, unsigned int end);

    /// Equal when `<=>` says equivalent: the event id and the intervals take no part.
    bool operator==(const SfxDto& other) const;
    std::partial_ordering operator<=>(const SfxDto& other) const;

    static SfxDtoBuilder builder();

private:
    std::string name_;
    std::string outputPath_;
    std::string effectId_;
    std::string effectPath_;
    std::string eventId_;
    std::list<std::unique_ptr<IntervalInterface>> activeIntervals_;
    SfxType type_;
    int effectIdIndex_;
    int repeats_;
    unsigned short fadeIn_;
    unsigned short fadeOut_;
    float volume_;
    float reverb_;
    float pan_;
};

/// Builds a record field by field. Nothing is validated. A short-lived value for one thread.
class SFX_EXPORT SfxDto::SfxDtoBuilder {
public:
    SfxDtoBuilder();

    SfxDtoBuilder& name(const std::string& name);
    SfxDtoBuilder& outputPath(const std::string& outputPath);
    SfxDtoBuilder& effectId(const std::string& effectId);
    SfxDtoBuilder& effectPath(const std::string& effectPath);
    SfxDtoBuilder& eventId(const std::string& eventId);
    SfxDtoBuilder& addActiveInterval(const IntervalInterface& interval);
    SfxDtoBuilder& type(SfxType type);
    SfxDtoBuilder& effectIdIndex(int effectIdIndex);
    SfxDtoBuilder& repeats(int repeats);
    SfxDtoBuilder& fadeIn(unsigned short fadeIn);
    SfxDtoBuilder& fadeOut(unsigned short fadeOut);
    SfxDtoBuilder& volume(float volume);
    SfxDtoBuilder& reverb(float reverb);
    SfxDtoBuilder& pan(float pan);

    /// An AMBIENT record always repeats without end, whatever was set.
    SfxDto build();

private:
    /// What a well-formed record is; nothing asks, since build() takes any.
    bool valid() const;

    std::string name_;
    std::string outputPath_;
    std::string effectId_;
    std::string effectPath_;
    std::string eventId_;
    std::list<SongInterval*> activeIntervals_;
    SfxType type_ = PRIMARY;
    int effectIdIndex_ = 0;
    int repeats_ = 0;
    unsigned short fadeIn_ = 0;
    unsigned short fadeOut_ = 0;
    float volume_ = 1.0F;
    float reverb_ = 0.0F;
    float pan_ = 0.5F;
};

/// Writes the record's text form; the event id is not part of it. Any thread.
SFX_EXPORT std::ostream& operator<<(std::ostream& out, const SfxDto& dto);

} // namespace vemo::audio::sfx
