#include <sfx/player/SfxPlayerImpl.h>

#include <QThread>
#include <QtConcurrentRun>

#include <sfx/model/SfxException.h>
#include <sfx/player/AudioOutputs.h>
#include <sfx/player/Playback.h>
#include <sfx/player/PlayerState.h>

namespace vemo::audio {

SfxPlayerImpl::SfxPlayerImpl(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                             std::shared_ptr<QThreadPool> stopPool, QObject* parent)
    : QObject(parent),
      state_(std::make_unique<PlayerState>(std::move(sfx), std::move(playbackPool),
                                           std::move(stopPool))) {
    ConnectPlaybacks();
}

// Once and for all playbacks to come: several threads may emit these signals while others start
// and end playbacks. Direct, since the handlers lock for themselves and hosts expect to be heard
// before the call returns.
void SfxPlayerImpl::ConnectPlaybacks() {
    const auto each = [this](const auto& deliver) {
        for (const auto& playback : state_->Playbacks())
            deliver(*playback);
    };
    const auto control = [each](void (QFuture<void>::*operation)()) {
        return [each, operation] {
            each([operation](Playback& playback) { playback.OnFade(operation); });
        };
    };
    constexpr auto Direct = Qt::DirectConnection;
    connect(
        this, &SfxPlayerImpl::fadeRequested, this,
        [each](VolumeType volume, FadeType duration, bool stopAfterFade) {
            each([=](Playback& playback) {
                playback.OnFadeRequested(volume, duration, stopAfterFade);
            });
        },
        Direct);
    connect(this, &SfxPlayerImpl::fadeSuspensionRequested, this, control(&QFuture<void>::suspend),
            Direct);
    connect(this, &SfxPlayerImpl::fadeResumeRequested, this, control(&QFuture<void>::resume),
            Direct);
    connect(this, &SfxPlayerImpl::fadeCancellationRequested, this, control(&QFuture<void>::cancel),
            Direct);
    connect(
        this, &SfxPlayerImpl::cancelSfx, this,
        [each](bool urgent) { each([urgent](Playback& playback) { playback.OnStop(urgent); }); },
        Direct);
}

SfxPlayerImpl::~SfxPlayerImpl() {
    // A host that destroys a player before it is done gets its playbacks ended, not a crash.
    while (state_->ActivePlaybacks() != 0) {
        for (const auto& playback : state_->Playbacks())
            playback->EndAtOnce();
        QThread::msleep(5);
    }
}

void SfxPlayerImpl::SetFile(SfxFileInterface* file) {
    // Not owned: shared with nobody.
    SetFile(std::shared_ptr<SfxFileInterface>(std::shared_ptr<void>(), file));
}

void SfxPlayerImpl::SetFile(const std::shared_ptr<SfxFileInterface>& file) {
    state_->SetFile(file);
    if (file != nullptr)
        SetSfxPath(file->Path());
}

std::shared_ptr<const sfx::SfxDto> SfxPlayerImpl::Record() const {
    return state_->Record();
}

void SfxPlayerImpl::Play() {
    const auto playback = Playback::Create(*this, *state_, weak_from_this().lock());
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
    if (AudioOutputs().isEmpty())
        throw SfxException("No audio devices found");
}

void SfxPlayerImpl::SetVolume(float volume) {
    state_->Change([volume](sfx::SfxDto& record) { record.setVolume(volume); });
}

float SfxPlayerImpl::Volume() {
    return state_->Record()->volume();
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
    const auto held = state_->Record();
    if (*held == other && held->eventId() == other.eventId())
        return;
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
    const auto file = state_->File();
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
    return *state_->Record() == other;
}

const sfx::SfxDto* SfxPlayerImpl::SfxData() const {
    return state_->HandOutRecord();
}

} // namespace vemo::audio
