#pragma once

#include <cstdint>
#include <future>
#include <memory>

#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QString>

#include <sfx/catalogue/SfxRepository.h>
#include <sfx/export.h>
#include <sfx/model/SfxDto.h>

namespace vemo::audio {

class SfxPlayerControllerImpl;
class SfxPlayerProxy;

/// Joins the controller and the players' proxies, which do not know each other, and relays what a
/// host tells the library and hears from it.
///
/// It lives on the thread that asked for it first, which runs an event loop. Any thread may call
/// its slots and emit its signals.
class SFX_EXPORT SfxPlayerConnectionMediator : public QObject {
    Q_OBJECT

public:
    /// One for the process, made by the first call and never destroyed.
    static SfxPlayerConnectionMediator* instance();

    /// An exception of a slot that came through the event loop is reported by soundEffectError and
    /// the log, and stays here.
    bool event(QEvent* event) override;

Q_SIGNALS:
    void createSfxPlayer(uint64_t, vemo::audio::sfx::SfxDto,
                         std::shared_ptr<std::promise<void>> playerCreated);
    void soundEffectsChanged();
    /// An effect file is decoded; carries its path, or the effect id for the file of a new proxy.
    /// A signal, despite its name.
    void onSfxIsReady(QString effectId);
    void activeSfxRepositoryRequested(std::promise<SfxRepository*>* promise);
    /// Emitted by a host that will need a user's audio file: see
    /// SfxPlayerControllerInterface::PreloadFile.
    void preloadCustomAudio(const QString& file);
    /// Something failed that no caller is waiting for. `priority` is "warning" or "error".
    void soundEffectError(QString priority, QString message, QString what);
    void fadeRequested(uint64_t, double volume, uint duration);

public Q_SLOTS:
    bool registerSfxPlayerController(SfxPlayerControllerImpl& controller);
    /// Throws std::runtime_error "No sound effect player controller registered".
    bool registerSfxPlayerProxy(SfxPlayerProxy* proxy, uint64_t id, const sfx::SfxDto& record,
                                std::shared_ptr<std::promise<void>> playerCreated);
    /// To be called by a host after it has changed records: the controller reloads them.
    void onSoundEffectsChanged();
    /// The promise is kept with the controller's repository, null if it has none, on the
    /// controller's thread.
    void onActiveSfxRepositoryRequested(std::promise<SfxRepository*>* promise);
    void onFadeRequested(uint64_t id, double volume, unsigned int duration);

private:
    friend class SfxPlayerProxy;

    SfxPlayerConnectionMediator() = default;
    ~SfxPlayerConnectionMediator() override = default;

    SfxPlayerControllerImpl* Controller_();

    QMutex mutex_;
    QPointer<SfxPlayerControllerImpl> controller_;
};

} // namespace vemo::audio
