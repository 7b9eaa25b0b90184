#pragma once

#include <memory>

#include <sfx/catalogue/SfxRepository.h>
#include <sfx/control/SfxPlayerControllerInterface.h>
#include <sfx/export.h>

namespace vemo::audio {

/// The way to the controller of the process: every operation goes to it as it is, on the caller's
/// thread. Any thread; as many of them as a host likes.
///
/// The controller lives on the thread on which the first one is made, and to the end of the
/// process. That thread runs an event loop: proxies and signals are served there.
class SFX_EXPORT SfxPlayerController : public SfxPlayerControllerInterface {
public:
    /// The first one in a process hands its repository over to the controller; later ones leave
    /// theirs alone. Throws what SfxManifest throws for an install that cannot be used; the
    /// repository then stays with the caller.
    explicit SfxPlayerController(std::unique_ptr<SfxRepository>& repository);
    /// A controller that this call has to create has no repository and never gets one: it plays
    /// custom audio and proxies, and loads no records.
    SfxPlayerController();
    ~SfxPlayerController() override;

    using SfxPlayerControllerInterface::stop;

    void play(const CustomAudioParameters& parameters) override;
    std::uint64_t play(const std::string& request) override;
    bool play(std::uint64_t playerId) override;
    void stop(bool isUrgent) override;
    void stop(const CustomAudioParameters& parameters) override;
    void stop(const std::string& request) override;
    void stop(std::uint64_t playerId) override;
    void stop() override;
    float GetDuration(std::uint64_t playerId) override;
    void SetOutputDevice(std::uint64_t playerId, const wchar_t* deviceId) override;
    void SetVolume(std::uint64_t playerId, float volume) override;
    float Volume(std::uint64_t playerId) override;
    void SetReverb(std::uint64_t playerId, float reverb) override;
    void SetPan(std::uint64_t playerId, float pan) override;
    void SetSfxPath(std::uint64_t playerId, const std::string& path) override;
    bool Done(std::uint64_t playerId) override;
    void WaitUntilDone(std::uint64_t playerId) override;
    bool PlaysSameSfx(std::uint64_t playerId, const sfx::SfxDto& record) override;
    std::optional<const sfx::SfxDto*> SfxData(std::uint64_t playerId) override;
    std::optional<SfxPlayerInterface*> GetPlayer(const std::string& eventId) override;
    std::optional<SfxPlayerInterface*> GetPlayer(std::uint64_t playerId) override;
    void PreloadFile(const std::string& path) override;
    void FadeTo(std::string eventId, float volume, float duration) override;

private:
    SfxPlayerControllerInterface* impl_;
};

} // namespace vemo::audio
