// How the controller comes into being, loads its records, and serves what comes through signals.
#include <sfx/control/SfxPlayerControllerImpl.h>

#include <exception>
#include <stdexcept>

#include <QDebug>
#include <QEvent>
#include <QThread>

#include <sfx/control/Log.h>
#include <sfx/control/PlayerStore.h>
#include <sfx/control/SfxPlayerConnectionMediator.h>
#include <sfx/control/SlotGuard.h>
#include <sfx/control/ThreadWatch.h>
#include <sfx/source/EncryptedVorbisFile.h>
#include <sfx/source/UserAudioFile.h>

namespace vemo::audio {

Q_LOGGING_CATEGORY(lcControl, "sfx.control")

SfxPlayerControllerImpl*
SfxPlayerControllerImpl::instance(std::unique_ptr<SfxRepository>& repository) {
    static auto* const controller = new SfxPlayerControllerImpl(repository, nullptr);
    return controller;
}

SfxPlayerControllerImpl::SfxPlayerControllerImpl(std::unique_ptr<SfxRepository>& repository,
                                                 QObject* parent)
    : QObject(parent),
      thread_(std::make_unique<ThreadWatch>()),
      threadPool_(std::make_shared<QThreadPool>()),
      store_(MakeStore_()),
      repository_(std::move(repository)) {
    // Direct, since a reference cannot be queued to a mediator that lives on another thread, and
    // proxies may come as soon as this constructor returns.
    connect(this, &SfxPlayerControllerImpl::sfxPlayerControllerImplCreated,
            SfxPlayerConnectionMediator::instance(),
            &SfxPlayerConnectionMediator::registerSfxPlayerController, Qt::DirectConnection);
    threadPool_->setThreadPriority(QThread::TimeCriticalPriority);
    threadPool_->setMaxThreadCount(16);
    Q_EMIT sfxPlayerControllerImplCreated(*this);
}

SfxPlayerControllerImpl::~SfxPlayerControllerImpl() = default;

std::unique_ptr<PlayerStore> SfxPlayerControllerImpl::MakeStore_() {
    PlayerStore::Wiring wiring;
    wiring.adopt = [this](QObject& object) {
        if (!ThreadEnded() && thread() != nullptr)
            object.moveToThread(thread());
    };
    wiring.connectFile = [this](QObject& file) {
        if (auto* effect = qobject_cast<EncryptedVorbisFile*>(&file))
            connect(effect, &EncryptedVorbisFile::isReady, this,
                    &SfxPlayerControllerImpl::onIsReady);
        else if (auto* user = qobject_cast<UserAudioFile*>(&file))
            connect(user, &UserAudioFile::isReady, this, &SfxPlayerControllerImpl::onIsReady);
    };
    // Direct, since the answer goes into a promise that lives on the asking thread's stack.
    wiring.connectPlayer = [this](SfxPlayerImpl& player) {
        connect(&player, &SfxPlayerImpl::sfxFileRequested, this,
                &SfxPlayerControllerImpl::onSfxFileRequested, Qt::DirectConnection);
    };
    wiring.userFileFailed = [this](const UserAudioFile& file,
                                   const vemo::sfx::CustomAudioException& fault) {
        ReportError_(QString::fromStdString(fault.Priority()),
                     QString::fromStdString(fault.Message()),
                     QString::fromStdString(file.failure()));
    };
    return std::make_unique<PlayerStore>(threadPool_, std::move(wiring));
}

void SfxPlayerControllerImpl::ReportError_(const QString& priority, const QString& message,
                                           const QString& what) {
    qCWarning(lcControl).noquote() << message << '-' << what;
    Q_EMIT soundEffectError(priority, message, what);
}

bool SfxPlayerControllerImpl::event(QEvent* event) {
    return KeepExceptions(
        event, [this](QEvent* it) { return QObject::event(it); },
        [this](const QString& priority, const QString& message) {
            ReportError_(priority, message, message);
        });
}

void SfxPlayerControllerImpl::StartInBackground_(void (SfxPlayerControllerImpl::*work)()) {
    // Ahead of the decodes, of which a first load queues one for every effect.
    constexpr int AheadOfDecodes = 1;
    const auto guarded = [this, work] {
        try {
            (this->*work)();
        } catch (const std::exception& fault) {
            qCWarning(lcControl) << "the sound effects cannot be loaded:" << fault.what();
        }
    };
    QThreadPool::globalInstance()->start(guarded, AheadOfDecodes);
}

void SfxPlayerControllerImpl::onSoundEffectsChanged() {
    if (reloadsWanted_.fetch_add(1) != 0)
        return;
    try {
        StartInBackground_(&SfxPlayerControllerImpl::Reload_);
    } catch (const std::exception& fault) {
        reloadsWanted_ = 0;
        qDebug() << fault.what();
    }
}

void SfxPlayerControllerImpl::Reload_() {
    const std::lock_guard lock(mutex_);
    for (unsigned int served = reloadsWanted_;;) {
        try {
            loadSfx();
            prunePlayers();
        } catch (...) {
            reloadsWanted_ = 0;
            throw;
        }
        if (reloadsWanted_.compare_exchange_strong(served, 0))
            return;
    }
}

void SfxPlayerControllerImpl::loadSfx() {
    if (!repository_)
        throw std::runtime_error("Null pointer for sfx repository");
    for (const sfx::SfxDto& record : repository_->Get()) {
        try {
            store_->Load(record);
        } catch (const std::exception& fault) {
            // One cue whose effect is not installed must not keep those behind it from loading.
            qCWarning(lcControl) << "the sound effect" << record.eventId().c_str() << "with effect"
                                 << record.effectId().c_str()
                                 << "cannot be loaded:" << fault.what();
        }
    }
}

void SfxPlayerControllerImpl::prunePlayers() {
    store_->Prune(repository_->Get());
}

void SfxPlayerControllerImpl::createSfxPlayer(uint64_t id, sfx::SfxDto record,
                                              std::shared_ptr<std::promise<void>> playerCreated) {
    switch (store_->Create(id, record)) {
    case PlayerStore::Made::Not:
        return; // ids are unique; a promise that nobody waits for stays as it is
    case PlayerStore::Made::WithKnownFile:
        Q_EMIT sfxIsReady(QString::fromStdString(record.effectId()));
        break;
    case PlayerStore::Made::WithNewFile:
        break;
    }
    playerCreated->set_value();
}

void SfxPlayerControllerImpl::onPlaySfx(uint64_t id) {
    if (!play(id))
        throw std::runtime_error("Failed to play sfx");
}

void SfxPlayerControllerImpl::onStopSfx(uint64_t id, bool isUrgent) {
    if (isUrgent)
        store_->AtOrSounding(id)->Stop(true);
    else
        stop(id);
}

void SfxPlayerControllerImpl::onGetDuration(uint64_t id,
                                            std::shared_ptr<std::promise<float>> durationQuery) {
    durationQuery->set_value(GetDuration(id));
}

void SfxPlayerControllerImpl::onSetOutputDevice(uint64_t id, AudioDeviceType device) {
    SetOutputDevice(id, device);
}

void SfxPlayerControllerImpl::onSetVolume(uint64_t id, float volume) {
    SetVolume(id, volume);
}

void SfxPlayerControllerImpl::onVolume(uint64_t id,
                                       std::shared_ptr<std::promise<float>> volumeQuery) {
    volumeQuery->set_value(Volume(id));
}

void SfxPlayerControllerImpl::onSetReverb(uint64_t id, float reverb) {
    SetReverb(id, reverb);
}

void SfxPlayerControllerImpl::onSetPan(uint64_t id, float pan) {
    SetPan(id, pan);
}

void SfxPlayerControllerImpl::onSetSfxPath(uint64_t id, std::string path) {
    SetSfxPath(id, path);
}

void SfxPlayerControllerImpl::onDone(uint64_t id, std::shared_ptr<std::promise<bool>> doneQuery) {
    doneQuery->set_value(Done(id));
}

void SfxPlayerControllerImpl::onWaitUntilDone(uint64_t id) {
    WaitUntilDone(id);
}

void SfxPlayerControllerImpl::onPlaysSameSfx(
    uint64_t id, const sfx::SfxDto& record, std::shared_ptr<std::promise<bool>> playsSameSfxQuery) {
    playsSameSfxQuery->set_value(PlaysSameSfx(id, record));
}

void SfxPlayerControllerImpl::onSfxData(
    uint64_t id, std::shared_ptr<std::promise<const sfx::SfxDto*>> sfxDataQuery) {
    sfxDataQuery->set_value(*SfxData(id));
}

void SfxPlayerControllerImpl::onSfxFileRequested(const std::string& effectId,
                                                 std::promise<const SfxFileInterface*>& sfxFile) {
    sfxFile.set_value(store_->File(effectId).get());
}

void SfxPlayerControllerImpl::onIsReady() {
    // A user's file announces nothing, meant so.
    if (auto* file = qobject_cast<EncryptedVorbisFile*>(sender()))
        Q_EMIT sfxIsReady(QString::fromStdString(file->Path()));
}

void SfxPlayerControllerImpl::onActiveRepositoryRequested(std::promise<SfxRepository*>* promise) {
    promise->set_value(repository_.get());
}

void SfxPlayerControllerImpl::onPreloadCustomAudio(const QString& file) {
    PreloadFile(file.toStdString());
}

void SfxPlayerControllerImpl::onReplaceSfxData(uint64_t id, const sfx::SfxDto& record) {
    store_->At(id)->ReplaceSfxData(record);
}

void SfxPlayerControllerImpl::onFadeRequested(uint64_t id, double volume, unsigned int duration) {
    Q_EMIT store_->At(id)->fadeRequested(static_cast<float>(volume), duration, false);
}

} // namespace vemo::audio
