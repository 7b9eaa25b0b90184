#pragma once

#include <memory>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>

namespace vemo::audio {

/// One player of the controller, driven from any thread. It plays one record, which need not be in
/// the repository. Any thread may call its operations; what moves or destroys the object comes
/// before or after them.
///
/// Play, stops, setters and fades return at once; queries wait for the controller's thread. A query
/// throws SfxException when the player is gone (a reload removes the players whose event and effect
/// no record has) or the controller's thread has ended. Every operation of a moved-from object
/// throws SfxException "No SFX Implementation Available".
class SFX_EXPORT SfxPlayer : public SfxPlayerInterface {
public:
    /// Returns when the controller has made the player. Throws std::runtime_error "No sound effect
    /// player controller registered" before there is a controller, SfxException if its thread has
    /// ended.
    explicit SfxPlayer(const sfx::SfxDto& record);
    SfxPlayer(SfxPlayer&& other) noexcept;
    SfxPlayer& operator=(SfxPlayer&& other) noexcept;
    SfxPlayer(const SfxPlayer&) = delete;
    SfxPlayer& operator=(const SfxPlayer&) = delete;
    /// The controller's player stays, and plays on.
    ~SfxPlayer() override;

    void Play() override;
    void Stop(bool urgent) override;
    void Stop() override;
    void SetOutputDevice(const wchar_t* deviceId) override;
    void SetVolume(float volume) override;
    float Volume() override;
    void SetReverb(float reverb) override;
    void SetPan(float pan) override;
    void SetSfxPath(const std::string& path) override;
    void ReplaceSfxData(const sfx::SfxDto& other) override;
    float GetDuration() override;
    void FadeTo(float volume, unsigned int duration) override;
    bool Done() override;
    /// Returns at once: the controller's thread waits, not the caller. Meant so; ask Done() to
    /// wait here.
    void WaitUntilDone() override;
    bool PlaysSameSfx(const sfx::SfxDto& other) override;
    const sfx::SfxDto* SfxData() const override;

private:
    SfxPlayerInterface& Player_() const;

    std::unique_ptr<SfxPlayerInterface> player_;
};

} // namespace vemo::audio
