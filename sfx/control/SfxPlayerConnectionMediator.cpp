#include <sfx/control/SfxPlayerConnectionMediator.h>

#include <stdexcept>

#include <sfx/control/Log.h>
#include <sfx/control/SfxPlayerControllerImpl.h>
#include <sfx/control/SfxPlayerProxy.h>
#include <sfx/control/SlotGuard.h>

namespace vemo::audio {

using Controller = SfxPlayerControllerImpl;
using Mediator = SfxPlayerConnectionMediator;
using Proxy = SfxPlayerProxy;

Mediator* SfxPlayerConnectionMediator::instance() {
    static auto* const mediator = new SfxPlayerConnectionMediator;
    return mediator;
}

Controller* SfxPlayerConnectionMediator::Controller_() {
    const QMutexLocker lock(&mutex_);
    return controller_;
}

bool SfxPlayerConnectionMediator::registerSfxPlayerController(Controller& controller) {
    {
        const QMutexLocker lock(&mutex_);
        controller_ = &controller;
    }
    connect(this, &Mediator::createSfxPlayer, &controller, &Controller::createSfxPlayer);
    connect(this, &Mediator::soundEffectsChanged, &controller, &Controller::onSoundEffectsChanged);
    connect(this, &Mediator::activeSfxRepositoryRequested, &controller,
            &Controller::onActiveRepositoryRequested);
    connect(&controller, &Controller::sfxIsReady, this, &Mediator::onSfxIsReady);
    connect(this, &Mediator::preloadCustomAudio, &controller, &Controller::onPreloadCustomAudio);
    connect(&controller, &Controller::soundEffectError, this, &Mediator::soundEffectError);
    return true;
}

bool SfxPlayerConnectionMediator::registerSfxPlayerProxy(
    Proxy* proxy, uint64_t id, const sfx::SfxDto& record,
    std::shared_ptr<std::promise<void>> playerCreated) {
    Controller* const controller = Controller_();
    if (controller == nullptr)
        throw std::runtime_error("No sound effect player controller registered");
    connect(proxy, &Proxy::playSfx, controller, &Controller::onPlaySfx);
    connect(proxy, &Proxy::stopSfx, controller, &Controller::onStopSfx);
    connect(proxy, &Proxy::getDuration, controller, &Controller::onGetDuration);
    connect(proxy, &Proxy::setOutputDevice, controller, &Controller::onSetOutputDevice);
    connect(proxy, &Proxy::setVolume, controller, &Controller::onSetVolume);
    connect(proxy, &Proxy::volume, controller, &Controller::onVolume);
    connect(proxy, &Proxy::setReverb, controller, &Controller::onSetReverb);
    connect(proxy, &Proxy::setPan, controller, &Controller::onSetPan);
    connect(proxy, &Proxy::setSfxPath, controller, &Controller::onSetSfxPath);
    connect(proxy, &Proxy::done, controller, &Controller::onDone);
    connect(proxy, &Proxy::waitUntilDone, controller, &Controller::onWaitUntilDone);
    connect(proxy, &Proxy::playsSameSfx, controller, &Controller::onPlaysSameSfx);
    connect(proxy, &Proxy::sfxData, controller, &Controller::onSfxData);
    connect(proxy, &Proxy::replaceSfxData, controller, &Controller::onReplaceSfxData);
    connect(proxy, &Proxy::fadeRequested, controller, &Controller::onFadeRequested);
    Q_EMIT createSfxPlayer(id, record, std::move(playerCreated));
    return true;
}

void SfxPlayerConnectionMediator::onSoundEffectsChanged() {
    Q_EMIT soundEffectsChanged();
}

void SfxPlayerConnectionMediator::onActiveSfxRepositoryRequested(
    std::promise<SfxRepository*>* promise) {
    Q_EMIT activeSfxRepositoryRequested(promise);
}

void SfxPlayerConnectionMediator::onFadeRequested(uint64_t id, double volume,
                                                  unsigned int duration) {
    Q_EMIT fadeRequested(id, volume, duration);
}

bool SfxPlayerConnectionMediator::event(QEvent* event) {
    return KeepExceptions(
        event, [this](QEvent* it) { return QObject::event(it); },
        [this](const QString& priority, const QString& message) {
            qCWarning(lcControl).noquote() << message;
            Q_EMIT soundEffectError(priority, message, message);
        });
}

} // namespace vemo::audio
