#include "PlaySession.h"

#include <algorithm>
#include <exception>

#include <QThread>

#include "LibraryLog.h"

namespace vemo::tool {

namespace {

constexpr int TICK_MS = 20;
// More playbacks than threads would wait for each other.
constexpr int MOST_THREADS = 16;
// The library gives a stuck playback up by itself within less.
constexpr double PATIENCE_SECONDS = 20.0;
// A sink may take its data ahead of time; a playback that ends earlier than that was cut off.
constexpr double MOST_AHEAD_SECONDS = 2.5;

} // namespace

PlaySession::PlaySession(const std::vector<InstalledEffect>& effects, const PlayOptions& options)
    : options_(options) {
    const auto pool = std::make_shared<QThreadPool>();
    pool->setThreadPriority(QThread::TimeCriticalPriority);
    pool->setMaxThreadCount(MOST_THREADS);
    for (const InstalledEffect& effect : effects) {
        waiting_.push_back(std::make_unique<PlayVoice>(effect, options_, pool));
    }
    connect(&timer_, &QTimer::timeout, this, [this] { guarded_(&PlaySession::tick_); });
    giveUp_.setSingleShot(true);
    connect(&giveUp_, &QTimer::timeout, &loop_, &QEventLoop::quit);
    connect(&interrupt_, &Interrupt::caught, this,
            [this] { guarded_(&PlaySession::onInterrupt_); });
}

void PlaySession::run() {
    awaitDecoding_();
    timer_.start(TICK_MS);
    loop_.exec();
    screen_.clear();
    if (failure_) {
        std::rethrow_exception(failure_);
    }
    Interrupt::checkpoint();
}

// Nothing may be thrown through Qt's event loop.
void PlaySession::guarded_(void (PlaySession::*step)()) {
    try {
        (this->*step)();
    } catch (...) {
        failure_ = std::current_exception();
        timer_.stop();
        loop_.quit();
    }
}

void PlaySession::awaitDecoding_() {
    for (const auto& voice : waiting_) {
        while (voice->stage() == Stage::Decoding) {
            Interrupt::checkpoint();
            QThread::msleep(1);
        }
        if (voice->stage() == Stage::Failed) {
            throw ToolError(ExitCode::Refused, voice->failure());
        }
    }
}

void PlaySession::startDue_() {
    while (!waiting_.empty() && !Interrupt::requested() &&
           (options_.together || playing_.empty())) {
        playing_.push_back(std::move(waiting_.front()));
        waiting_.erase(waiting_.begin());
        PlayVoice& voice = *playing_.back();
        screen_.started(voice);
        voice.play();
    }
}

void PlaySession::tick_() {
    startDue_();
    std::vector<PlayVoice*> sounding;
    for (auto& voice : playing_) {
        if (options_.stopAfter && voice->elapsed() >= *options_.stopAfter) {
            voice->stop();
        }
        if (voice->over()) {
            endOne_(*voice);
            ended_.push_back(std::move(voice));
        } else {
            checkOverdue_(*voice);
            sounding.push_back(voice.get());
        }
    }
    std::erase(playing_, nullptr);
    screen_.playing(sounding);
    if (playing_.empty() && (waiting_.empty() || Interrupt::requested())) {
        timer_.stop();
        loop_.quit();
    }
}

void PlaySession::endOne_(PlayVoice& voice) {
    const std::string fault = playbackFault();
    if (!fault.empty() && !Interrupt::requested()) {
        throw ToolError(ExitCode::NoAudio, voice.effect().id + ": " + fault);
    }
    const auto all = voice.allSeconds();
    if (!voice.stopped() && (!all || voice.elapsed() + MOST_AHEAD_SECONDS < *all)) {
        throw ToolError(ExitCode::NoAudio, voice.effect().id + ": the playback broke off after " +
                                               secondsText(voice.elapsed()));
    }
    screen_.ended(voice);
}

void PlaySession::checkOverdue_(PlayVoice& voice) const {
    const double fade = options_.fadeOut / 1000.0;
    const auto all = voice.allSeconds();
    const auto most = options_.stopAfter && (!all || *options_.stopAfter + fade < *all)
                          ? std::optional(*options_.stopAfter + fade)
                          : all;
    if (most && voice.elapsed() > *most + PATIENCE_SECONDS) {
        throw ToolError(ExitCode::NoAudio, voice.effect().id + ": the audio output takes no sound");
    }
}

void PlaySession::onInterrupt_() {
    waiting_.clear();
    for (const auto& voice : playing_) {
        voice->stop();
    }
    // A playback that does not end by itself must not hold the user.
    giveUp_.start(options_.fadeOut + 3000);
}

} // namespace vemo::tool
