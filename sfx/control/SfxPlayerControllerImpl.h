#pragma once

#include <atomic>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <QObject>
#include <QString>
#include <QThreadPool>

#include <sfx/catalogue/SfxRepository.h>
#include <sfx/control/SfxPlayerControllerInterface.h>
#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

class PlayerStore;
class ThreadWatch;

/// Owns the players and the decoded files of the process and keeps them in line with the records
/// of its repository. Hosts reach it through SfxPlayerController and SfxPlayer.
///
/// It lives on the thread that asked for it first, whose event loop must run: proxies are served
/// there, sfxIsReady is emitted there, and removed players are destroyed there. The operations of
/// the interface run on the caller's thread, any thread.
class SFX_EXPORT SfxPlayerControllerImpl : public QObject, public SfxPlayerControllerInterface {
    Q_OBJECT

public:
    /// The one of the process. The first call makes it, takes the repository out of the argument
    /// (which may be empty) and throws what SfxManifest throws; later calls leave it alone. Never
    /// destroyed.
    static SfxPlayerControllerImpl* instance(std::unique_ptr<SfxRepository>& repository);

    SfxPlayerControllerImpl(const SfxPlayerControllerImpl&) = delete;
    SfxPlayerControllerImpl& operator=(const SfxPlayerControllerImpl&) = delete;

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

    /// False once the player was removed. Any thread.
    bool HoldsPlayer(std::uint64_t playerId) const;
    /// True once the thread that the controller lives on has ended, so that nothing is served any
    /// more. Any thread.
    bool ThreadEnded() const;

    /// An exception of a slot that came through the event loop is reported by soundEffectError and
    /// the log, and stays here.
    bool event(QEvent* event) override;

Q_SIGNALS:
    void sfxPlayerControllerImplCreated(SfxPlayerControllerImpl& impl);
    void sfxPlayerImplCreated(uint64_t);
    void duration(uint64_t, float);
    void volume(uint64_t, float);
    void done(uint64_t, bool);
    void playsSameSfx(uint64_t, bool);
    void sfxData(uint64_t, const vemo::audio::sfx::SfxDto&);
    void initialize();
    void sfxIsReady(QString effectId);
    /// From any thread.
    void soundEffectError(QString priority, QString message, QString what);

public Q_SLOTS:
    void createSfxPlayer(uint64_t, vemo::audio::sfx::SfxDto,
                         std::shared_ptr<std::promise<void>> playerCreated);
    void onPlaySfx(uint64_t);
    void onStopSfx(uint64_t, bool isUrgent);
    void onGetDuration(uint64_t, std::shared_ptr<std::promise<float>> durationQuery);
    void onSetOutputDevice(uint64_t, AudioDeviceType);
    void onSetVolume(uint64_t, float);
    void onVolume(uint64_t, std::shared_ptr<std::promise<float>> volumeQuery);
    void onSetReverb(uint64_t, float);
    void onSetPan(uint64_t, float);
    void onSetSfxPath(uint64_t, std::string path);
    void onDone(uint64_t, std::shared_ptr<std::promise<bool>> doneQuery);
    void onWaitUntilDone(uint64_t);
    void onPlaysSameSfx(uint64_t, const sfx::SfxDto&,
                        std::shared_ptr<std::promise<bool>> playsSameSfxQuery);
    void onSfxData(uint64_t,
                   std::shared_ptr<std::promise<const vemo::audio::sfx::SfxDto*>> sfxDataQuery);
    /// Reloads the records in the background. Calls that come while a reload is waiting are served
    /// by that one.
    void onSoundEffectsChanged();
    void onSfxFileRequested(const std::string&, std::promise<const SfxFileInterface*>& sfxFile);
    void onIsReady();
    void onActiveRepositoryRequested(std::promise<SfxRepository*>* promise);
    void onPreloadCustomAudio(const QString& file);
    void onReplaceSfxData(uint64_t, const sfx::SfxDto&);
    void onFadeRequested(uint64_t, double, unsigned int);

private:
    SfxPlayerControllerImpl(std::unique_ptr<SfxRepository>& repository, QObject* parent);
    ~SfxPlayerControllerImpl() override;

    std::unique_ptr<PlayerStore> MakeStore_();
    void StartInBackground_(void (SfxPlayerControllerImpl::*work)());
    void loadSfx();
    void prunePlayers();
    void Reload_();
    void ReportError_(const QString& priority, const QString& message, const QString& what);

    std::unique_ptr<ThreadWatch> thread_;
    std::shared_ptr<QThreadPool> threadPool_;
    std::unique_ptr<PlayerStore> store_;
    std::mutex mutex_; // held for a whole reload
    std::atomic<unsigned int> reloadsWanted_ = 0;
    std::unique_ptr<SfxRepository> repository_;
};

} // namespace vemo::audio
