#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>

#include <vemo_core/VemoEvent.h>
#include <vemo_core/export.h>

/// The change log: the ordered events of a show. The process has one active change log; it lives
/// in memory until a host opens a show file, which then receives every edit.
namespace CL {

/// How one sound effect is played. A plain value; nothing is checked.
class VEMO_CORE_EXPORT SfxProperties {
public:
    /// Id in the install catalogue.
    const std::string& effectId() const { return effectId_; }
    /// Index of the effect within its catalogue list.
    int effectIdIndex() const { return effectIdIndex_; }
    const std::string& name() const { return name_; }
    /// Linear gain.
    float volume() const { return volume_; }
    /// 0 left, 0.5 centre, 1 right.
    float pan() const { return pan_; }
    /// Gain of the echo.
    float reverb() const { return reverb_; }
    /// Milliseconds.
    std::uint16_t fadeIn() const { return fadeIn_; }
    /// Milliseconds.
    std::uint16_t fadeOut() const { return fadeOut_; }
    const std::string& outputPath() const { return outputPath_; }
    /// Passes after the first; -1 repeats without end.
    int repeats() const { return repeats_; }

    void setEffectId(const std::string& effectId) { effectId_ = effectId; }
    void setEffectIdIndex(int effectIdIndex) { effectIdIndex_ = effectIdIndex; }
    void setName(const std::string& name) { name_ = name; }
    void setVolume(float volume) { volume_ = volume; }
    void setPan(float pan) { pan_ = pan; }
    void setReverb(float reverb) { reverb_ = reverb; }
    void setFadeIn(std::uint16_t fadeIn) { fadeIn_ = fadeIn; }
    void setFadeOut(std::uint16_t fadeOut) { fadeOut_ = fadeOut; }
    void setOutputPath(const std::string& outputPath) { outputPath_ = outputPath; }
    void setRepeats(int repeats) { repeats_ = repeats; }

    bool operator==(const SfxProperties&) const = default;

private:
    std::string effectId_;
    std::string name_;
    std::string outputPath_;
    int effectIdIndex_ = 0;
    int repeats_ = 0;
    float volume_ = 1.0F;
    float pan_ = 0.5F;
    float reverb_ = 0.0F;
    std::uint16_t fadeIn_ = 0;
    std::uint16_t fadeOut_ = 0;
};

/// A sound effect as an event. A plain value.
class VEMO_CORE_EXPORT Sfx : public cmn::VemoEvent {
public:
    /// `number` 0: the change log gives the event its number when it is added.
    Sfx(unsigned int number, std::string eventId, SfxProperties properties);

    const SfxProperties& sfx_properties() const { return properties_; }

private:
    SfxProperties properties_;
};

/// A show file cannot be used; what() names the file and the reason. The active change log stays
/// as it was.
class VEMO_CORE_EXPORT ShowFileError : public std::runtime_error {
public:
    explicit ShowFileError(const std::string& text);
    ShowFileError(const ShowFileError&) = default;
    ShowFileError& operator=(const ShowFileError&) = default;
    ~ShowFileError() override;
};

/// The active change log as its readers see it: reached through ActiveChangeLogExclusive, and read
/// only while that lives. It is in memory; reading costs no file access.
class VEMO_CORE_EXPORT ChangeLog {
public:
    virtual ~ChangeLog();
    ChangeLog(const ChangeLog&) = delete;
    ChangeLog& operator=(const ChangeLog&) = delete;

    /// The sound-effect events in their order. An event keeps its address until it is deleted or
    /// another show is opened.
    virtual const std::list<Sfx>& SoundEffects() const = 0;
    /// UTF-8 path of the open show file; empty while the log is only in memory.
    virtual std::string ShowFile() const = 0;

protected:
    ChangeLog();
};

/// Edits the active change log, whichever that is at the time of the call. Has no state of its
/// own; any thread. With a show file open, an edit that has returned is on disk for good; one that
/// throws ShowFileError (disk full, file gone) has changed nothing.
class VEMO_CORE_EXPORT Editor {
public:
    /// Appends a copy with a number of its own. An event id "sfx.N" that the host chose itself is
    /// never generated again.
    void AddSoundEffect(const Sfx& event);
    /// Replaces the properties of the event; its place, number and id stay. An event that is not
    /// in the log changes nothing.
    void EditSoundEffectSFXPropertyValues(const Sfx& event, const SfxProperties& properties);
    /// Takes the event out of the log. An event that is not in the log changes nothing.
    void DeleteEvent(const cmn::VemoEvent& event);
    /// The next free suffix of an event id "sfx.SUFFIX", counting from 1. It is used up by this
    /// call: neither a delete nor a restart brings it back.
    std::uint64_t GetNextSfxEventIdSuffix();
    /// What GetNextSfxEventIdSuffix() would answer.
    std::uint64_t PreviewNextSfxEventId() const;
};

/// Makes the show in the file the active change log, and every further edit durable in it. A file
/// that does not exist (or is empty) becomes a new show without events. Any thread.
///
/// `path` is UTF-8. Throws ShowFileError when the file is no show, was made by a newer version, is
/// open in another program, cannot be written, or is damaged. Pointers into the former log end.
VEMO_CORE_EXPORT void OpenShow(const std::string& path);

/// Closes the show file, if one is open; the active change log is then an empty one in memory.
VEMO_CORE_EXPORT void CloseShow();

} // namespace CL
