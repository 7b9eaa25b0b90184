#pragma once

#include <cstdint>
#include <future>
#include <memory>
#include <string>

#include <QObject>

#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>

namespace vemo::audio {

class SfxPlayerControllerImpl;

/// A player of the controller as another thread sees it: every call becomes a signal that the
/// controller serves on its own thread, in the order of the calls. Queries wait for the answer, as
/// long as it takes; they throw SfxException when none can come any more. Any thread may call its
/// operations.
class SfxPlayerProxy : public QObject, public SfxPlayerInterface {
    Q_OBJECT

public:
    /// Returns when the controller has made the player. Throws std::runtime_error "No sound effect
    /// player controller registered", and SfxException if the controller's thread has ended.
    SfxPlayerProxy(sfx::SfxDto record, QObject* parent);
    /// The controller's player stays.
    ~SfxPlayerProxy() override;

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
    /// Returns at once: it is the controller that waits. Meant so.
    void WaitUntilDone() override;
    bool PlaysSameSfx(const sfx::SfxDto& other) override;
    const sfx::SfxDto* SfxData() const override;

Q_SIGNALS:
    void createSfxPlayerImpl(vemo::audio::SfxPlayerProxy* proxy, uint64_t, vemo::audio::sfx::SfxDto,
                             std::shared_ptr<std::promise<void>> playerCreated);
    void playSfx(uint64_t);
    void stopSfx(uint64_t, bool isUrgent);
    void getDuration(uint64_t, std::shared_ptr<std::promise<float>> promise);
    void setOutputDevice(uint64_t, AudioDeviceType);
    void setVolume(uint64_t, float volume);
    void setReverb(uint64_t, float);
    void setPan(uint64_t, float);
    void setSfxPath(uint64_t, std::string path);
    void done(uint64_t, std::shared_ptr<std::promise<bool>>);
    void waitUntilDone(uint64_t);
    void playsSameSfx(uint64_t, vemo::audio::sfx::SfxDto, std::shared_ptr<std::promise<bool>>);
    // Const, since SfxData() is.
    void sfxData(uint64_t, std::shared_ptr<std::promise<const vemo::audio::sfx::SfxDto*>>) const;
    void replaceSfxData(uint64_t, vemo::audio::sfx::SfxDto);
    void fadeRequested(uint64_t, double, uint duration);
    void volume(uint64_t, std::shared_ptr<std::promise<float>>);

private:
    /// Hands a promise to `ask` and waits until it is kept.
    template <typename Value, typename Ask>
    Value Query_(const Ask& ask) const;
    /// Waits; throws when the answer cannot come any more.
    template <typename Value>
    Value Await_(std::future<Value>& answer, bool playerExists) const;

    uint64_t id_;
    SfxPlayerControllerImpl* controller_ = nullptr;
};

} // namespace vemo::audio
