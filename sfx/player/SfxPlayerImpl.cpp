#include <sfx/player/SfxPlayerImpl.h>

#include <QMediaDevices>
#include <QThread>
#include <QtConcurrentRun>

#include <sfx/model/SfxException.h>
#include <sfx/player/Playback.h>
#include <sfx/player/PlayerState.h>

namespace vemo::audio {

PlayerState::PlayerState(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                         std::shared_ptr<QThreadPool> stopPool)
    : record_(std::make_shared<sfx::SfxDto>(std::move(sfx))),
      playbackPool_(std::move(playbackPool)),
      stopPool_(std::move(stopPool)) {}

PlayerState::~PlayerState() {
    stopPool_.reset();
    playbackPool_.reset();
}

sfx::SfxDto PlayerState::Record() const {
    const std::lock_guard lock(mutex_);
    return *record_;
}

QString PlayerState::EventId() const {
    const std::lock_guard lock(mutex_);
    return QString::fromStdString(record_->eventId());
}

void PlayerState::PlaybackBegins(const std::shared_ptr<Playback>& playback) {
    active_.fetch_add(1, std::memory_order_acq_rel);
    const std::lock_guard lock(mutex_);
    std::erase_if(playbacks_, [](const auto& known) { return known.expired(); });
    playbacks_.push_back(playback);
}

std::vector<std::shared_ptr<Playback>> PlayerState::Playbacks() const {
    std::vector<std::shared_ptr<Playback>> alive;
    const std::lock_guard lock(mutex_);
    for (const auto& known : playbacks_) {
        if (auto playback = known.lock())
            alive.push_back(std::move(playback));
    }
    return alive;
}

SfxPlayerImpl::SfxPlayerImpl(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                             std::shared_ptr<QThreadPool> stopPool, QObject* parent)
    : QObject(parent),
      state_(std::make_unique<PlayerState>(std::move(sfx), std::move(playbackPool),
                                           std::move(stopPool))) {}

SfxPlayerImpl::~SfxPlayerImpl() {
    // A host that destroys a player before it is done gets its playbacks ended, not a crash.
    while (state_->ActivePlaybacks() != 0) {
        for (const auto& playback : state_->Playbacks())
            playback->EndAtOnce();
        QThread::msleep(5);
    }
}

void SfxPlayerImpl::SetFile(SfxFileInterface* file) {
    state_->SetFile(file);
    if (file == nullptr)
        return;
    SetSfxPath(file->Path());
}

void SfxPlayerImpl::Play() {
    const auto playback = Playback::Create(*this, *state_);
    try {
        static_cast<void>(
            QtConcurrent::run(state_->PlaybackPool(), [playback] { playback->Run(); }));
    } catch (...) {
        playback->EndAtOnce();
        throw;
    }
}

void SfxPlayerImpl::Stop(bool urgent) {
    Q_EMIT cancelSfx(urgent);
}

void SfxPlayerImpl::Stop() {
    Stop(false);
}

void SfxPlayerImpl::SetOutputDevice(const wchar_t*) {
    // Playback stays on the default output, whatever is asked for; only a machine without any
    // output is worth an error.
    if (QMediaDevices::audioOutputs().isEmpty())
        throw SfxException("No audio devices found");
}

void SfxPlayerImpl::SetVolume(float volume) {
    state_->Change([volume](sfx::SfxDto& record) { record.setVolume(volume); });
}

float SfxPlayerImpl::Volume() {
    float volume = 0.0F;
    state_->Change([&volume](const sfx::SfxDto& record) { volume = record.volume(); });
    return volume;
}

void SfxPlayerImpl::SetReverb(float reverb) {
    state_->Change([reverb](sfx::SfxDto& record) { record.setReverb(reverb); });
}

void SfxPlayerImpl::SetPan(float pan) {
    state_->Change([pan](sfx::SfxDto& record) { record.setPan(pan); });
}

void SfxPlayerImpl::SetSfxPath(const std::string& path) {
    state_->Change([&path](sfx::SfxDto& record) { record.setEffectPath(path); });
}

void SfxPlayerImpl::ReplaceSfxData(const sfx::SfxDto& other) {
    state_->Change([&other](sfx::SfxDto& record) {
        record.setName(other.name());
        record.setEventId(other.eventId());
        record.setVolume(other.volume());
        record.setPan(other.pan());
        record.setReverb(other.reverb());
        record.setEffectPath(other.effectPath());
        record.setFadeIn(other.fadeIn());
        record.setFadeOut(other.fadeOut());
        record.setRepeats(other.repeats());
        record.setType(other.type());
        record.setOutputPath(other.outputPath());
        record.setEffectId(other.effectId());
        record.setEffectIdIndex(other.effectIdIndex());
    });
}

float SfxPlayerImpl::GetDuration() {
    const SfxFileInterface* file = state_->File();
    return file == nullptr ? -1.0F : file->Duration();
}

void SfxPlayerImpl::FadeTo(float volume, unsigned int duration) {
    Q_EMIT fadeRequested(volume, duration, false);
}

bool SfxPlayerImpl::Done() {
    return state_->ActivePlaybacks() == 0;
}

void SfxPlayerImpl::WaitUntilDone() {
    while (!Done())
        QThread::msleep(100);
}

bool SfxPlayerImpl::PlaysSameSfx(const sfx::SfxDto& other) {
    bool same = false;
    state_->Change([&](const sfx::SfxDto& record) { same = record == other; });
    return same;
}

const sfx::SfxDto* SfxPlayerImpl::SfxData() const {
    return state_->RawRecord();
}

} // namespace vemo::audio
