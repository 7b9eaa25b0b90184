#include <sfx/player/Playback.h>

#include <exception>

#include <QPromise>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <sfx/player/Fade.h>
#include <sfx/player/Log.h>
#include <sfx/player/PlaybackSupervisor.h>
#include <sfx/player/PullDevice.h>
#include <sfx/player/SinkStage.h>

namespace vemo::audio {

Q_LOGGING_CATEGORY(lcPlayer, "sfx.player")

namespace {

// Fades run on the playback pool; when playbacks have taken all of its threads they come here,
// since a stop must fade however much is playing.
QThreadPool& SpareFadePool() {
    static QThreadPool* const pool = [] {
        auto* made = new QThreadPool;
        made->setMaxThreadCount(1024);
        return made;
    }();
    return *pool;
}

} // namespace

std::shared_ptr<Playback> Playback::Create(SfxPlayerImpl& player, PlayerState& state,
                                           std::shared_ptr<SfxPlayerImpl> keeper) {
    auto playback = std::make_shared<Playback>(player, state, std::move(keeper));
    state.PlaybackBegins(playback);
    return playback;
}

Playback::Playback(SfxPlayerImpl& player, PlayerState& state, std::shared_ptr<SfxPlayerImpl> keeper)
    : player_(player), state_(state), keeper_(std::move(keeper)), pool_(state.PlaybackPool()) {}

Playback::~Playback() = default;

void Playback::Run() {
    {
        const std::lock_guard lock(mutex_);
        if (phase_ != Phase::Queued)
            return;
        phase_ = Phase::Preparing;
    }
    PlaybackSupervisor::Instance().Watch(shared_from_this());
    try {
        SinkStage stage(*this);
        stage.Sound();
        Finish();
        stage.Close();
    } catch (const std::exception& fault) {
        qCWarning(lcPlayer) << "playback ended by:" << fault.what();
    }
    Finish();
    Leave();
    const std::lock_guard lock(mutex_);
    if (abandoned_)
        pool_->reserveThread(); // given back when the playback was abandoned
}

void Playback::OnStop(bool urgent) {
    const std::lock_guard lock(mutex_);
    switch (phase_) {
    case Phase::Queued:
        // No thread has come for it yet, and with a busy pool none may for long.
        phase_ = Phase::Preparing;
        static_cast<void>(QtConcurrent::run(state_.StopPool(), [self = shared_from_this()] {
            self->Finish();
            self->Leave();
        }));
        break;
    case Phase::Preparing:
        stopEarly_ = true;
        break;
    case Phase::Playing:
        if (started_)
            StartStopTask(urgent);
        else
            stopEarly_ = true;
        break;
    case Phase::Finished:
    case Phase::Over:
        break;
    }
}

void Playback::StartStopTask(bool urgent) {
    ++tasks_;
    static_cast<void>(QtConcurrent::run(
        state_.StopPool(), [self = shared_from_this(), urgent](QPromise<void>& promise) {
            // An urgent stop only cancels the fade under way; meant so, a host that wants
            // silence at once has a fade-out of 0 for it.
            if (urgent)
                Q_EMIT self->player_.fadeCancellationRequested();
            else
                Q_EMIT self->player_.fadeRequested(0.0F, self->state_.Record()->fadeOut(), true);
            promise.finish();
            self->TaskEnds();
        }));
}

void Playback::OnFadeRequested(VolumeType volume, FadeType duration, bool stopAfterFade) {
    // A cancelled fade ends its playback; that a new fade does this to a running one is meant.
    Q_EMIT player_.fadeCancellationRequested();
    const std::lock_guard lock(mutex_);
    if (phase_ != Phase::Playing || leaving_)
        return;
    ++tasks_;
    const auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    fade_ = promise->future();
    const auto fade = [self = shared_from_this(), promise, sink = std::weak_ptr(link_), volume,
                       duration, stopAfterFade] {
        // Run even when it is cancelled already: a stop that lost its fade must still end.
        RunFade(*promise, sink, volume, duration, stopAfterFade,
                [&self] { Q_EMIT self->player_.sfxFinished(self->state_.EventId()); });
        promise->finish();
        self->TaskEnds();
    };
    if (!pool_->tryStart(fade))
        SpareFadePool().start(fade);
}

void Playback::OnFade(void (QFuture<void>::*control)()) {
    QFuture<void> fade;
    {
        const std::lock_guard lock(mutex_);
        fade = fade_;
    }
    (fade.*control)();
}

bool Playback::EnterPlaying(const std::shared_ptr<SinkLink>& link, PullDevice& device) {
    const std::lock_guard lock(mutex_);
    if (phase_ != Phase::Preparing || stopEarly_)
        return false;
    phase_ = Phase::Playing;
    link_ = link;
    device_ = &device;
    return true;
}

bool Playback::WasAbandoned() const {
    const std::lock_guard lock(mutex_);
    return abandoned_;
}

void Playback::EnterStarted() {
    const std::lock_guard lock(mutex_);
    started_ = true;
    if (stopEarly_ && phase_ == Phase::Playing)
        StartStopTask(false);
}

void Playback::ForgetDevice() {
    const std::lock_guard lock(mutex_);
    device_ = nullptr;
}

bool Playback::StopCameEarly() const {
    const std::lock_guard lock(mutex_);
    return stopEarly_ || phase_ != Phase::Preparing;
}

void Playback::EndAtOnce() {
    {
        const std::lock_guard lock(mutex_);
        if (phase_ == Phase::Playing)
            link_->ReportStopped(SinkLink::Stop::AtOnce);
        stopEarly_ = true;
        if (phase_ != Phase::Queued)
            return;
        phase_ = Phase::Preparing;
    }
    Finish();
    Leave();
}

void Playback::Finish() {
    {
        const std::lock_guard lock(mutex_);
        if (phase_ >= Phase::Finished)
            return;
        phase_ = Phase::Finished;
        ++tasks_; // keeps the player while its signal is on the way
    }
    Q_EMIT player_.sfxFinished(state_.EventId());
    TaskEnds();
}

void Playback::Leave() {
    std::unique_lock lock(mutex_);
    if (leaving_)
        return;
    leaving_ = true;
    if (link_)
        link_->Cut();
    QFuture<void> fade = fade_;
    lock.unlock();
    fade.resume();
    lock.lock();
    tasksOver_.wait(lock, [this] { return tasks_ == 0; });
    phase_ = Phase::Over;
    lock.unlock();
    state_.PlaybackIsOver();
}

bool Playback::IsOver() const {
    const std::lock_guard lock(mutex_);
    return phase_ == Phase::Over;
}

void Playback::Abandon() {
    {
        const std::lock_guard lock(mutex_);
        if (leaving_)
            return;
        abandoned_ = true;
        if (device_ != nullptr)
            device_->Detach();
        // Its thread may never come back: the pool gets another one for it.
        pool_->releaseThread();
    }
    qCWarning(lcPlayer) << "the audio system does not answer; the playback is given up";
    Finish();
    Leave();
}

void Playback::TaskEnds() {
    // Notified under the lock: the waiter may be gone as soon as it sees zero.
    const std::lock_guard lock(mutex_);
    --tasks_;
    tasksOver_.notify_all();
}

} // namespace vemo::audio
