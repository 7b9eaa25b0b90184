#pragma once

#include <string>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>

namespace vemo::audio {

/// Linear volume, 0 to 1.
using VolumeType = float;
/// Milliseconds.
using FadeType = unsigned int;
/// Id of an output device, with the life time of a string literal: calls may be queued.
using AudioDeviceType = const wchar_t*;

/// Plays one effect record. The order of the virtual operations is part of the interface.
class SFX_EXPORT SfxPlayerInterface {
public:
    /// Starts one more playback; returns at once.
    virtual void Play() = 0;
    /// Not urgent: fades out over the record's fade-out and ends. Urgent: cancels a running fade,
    /// which mutes and ends its playback; a playback with no fade under way plays on.
    virtual void Stop(bool urgent) = 0;
    virtual void Stop() = 0;
    /// Throws SfxException "No audio devices found"; otherwise does nothing, playback always uses
    /// the default output.
    virtual void SetOutputDevice(const wchar_t* deviceId) = 0;
    /// The setters change the record; a running playback keeps its sound.
    virtual void SetVolume(float volume) = 0;
    virtual float Volume() = 0;
    virtual void SetReverb(float reverb) = 0;
    virtual void SetPan(float pan) = 0;
    virtual void SetSfxPath(const std::string& path) = 0;
    /// Takes over every field but the active intervals.
    virtual void ReplaceSfxData(const sfx::SfxDto& other) = 0;
    /// The file's Duration(); -1.0 without a file.
    virtual float GetDuration() = 0;
    /// Fades the running playbacks to `volume` in `duration` milliseconds, in steps of 30 ms. A
    /// fade that is still running when the next one is asked for ends its playback.
    virtual void FadeTo(float volume, unsigned int duration) = 0;
    virtual ~SfxPlayerInterface() = default;
    /// True when no playback is running.
    virtual bool Done() = 0;
    /// Blocks until Done(); looks every 100 ms.
    virtual void WaitUntilDone() = 0;
    virtual bool PlaysSameSfx(const sfx::SfxDto& other) = 0;
    /// The player's record as it is now. It does not change any more: read it at once, or copy it.
    /// It stays readable while it is the player's record, and then until 4096 further records
    /// that were handed out have been replaced in this process.
    virtual const sfx::SfxDto* SfxData() const = 0;
};

} // namespace vemo::audio
