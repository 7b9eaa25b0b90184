#include "PlaySession.h"

#include <algorithm>
#include <exception>

#include <QThread>

namespace vemo::tool {

namespace {

constexpr int TICK_MS = 20;
// The library gives a stuck playback up by itself within less.
constexpr double PATIENCE_SECONDS = 20.0;

} // namespace

PlaySession::PlaySession(std::vector<std::unique_ptr<Voice>> voices, const PlayOrder& order)
    : order_(order), waiting_(std::move(voices)) {
    connect(&timer_, &QTimer::timeout, this, [this] { guarded_(&PlaySession::tick_); });
    giveUp_.setSingleShot(true);
    connect(&giveUp_, &QTimer::timeout, &loop_, &QEventLoop::quit);
    connect(&interrupt_, &Interrupt::caught, this,
            [this] { guarded_(&PlaySession::onInterrupt_); });
}

void PlaySession::run() {
    awaitReady_();
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

void PlaySession::awaitReady_() {
    for (const auto& voice : waiting_) {
        while (!voice->ready()) {
            Interrupt::checkpoint();
            QThread::msleep(1);
        }
    }
}

void PlaySession::startDue_() {
    while (!waiting_.empty() && !Interrupt::requested() && (order_.together || playing_.empty())) {
        playing_.push_back(std::move(waiting_.front()));
        waiting_.erase(waiting_.begin());
        playing_.back()->play();
    }
}

void PlaySession::tick_() {
    startDue_();
    std::vector<Voice*> sounding;
    for (auto& voice : playing_) {
        if (voice->begins()) {
            screen_.started(*voice);
        }
        if (order_.stopAfter && voice->begun() && voice->elapsed() >= *order_.stopAfter) {
            voice->stop();
        }
        if (voice->over()) {
            endOne_(*voice);
            ended_.push_back(std::move(voice));
        } else {
            checkOverdue_(*voice);
            if (voice->begun()) {
                sounding.push_back(voice.get());
            }
        }
    }
    std::erase(playing_, nullptr);
    screen_.playing(sounding);
    if (playing_.empty() && (waiting_.empty() || Interrupt::requested())) {
        timer_.stop();
        loop_.quit();
    }
}

void PlaySession::endOne_(Voice& voice) {
    if (const auto fault = voice.fault()) {
        throw *fault;
    }
    screen_.ended(voice);
}

void PlaySession::checkOverdue_(const Voice& voice) const {
    if (!voice.begun()) {
        return; // the library gives up a decode that stands still
    }
    const double fade = voice.record().fadeOut() / 1000.0;
    const auto all = voice.allSeconds();
    const auto most = order_.stopAfter && (!all || *order_.stopAfter + fade < *all)
                          ? std::optional(*order_.stopAfter + fade)
                          : all;
    if (most && voice.elapsed() > *most + PATIENCE_SECONDS) {
        throw ToolError(ExitCode::NoAudio, voice.label() + ": the audio output takes no sound");
    }
}

void PlaySession::onInterrupt_() {
    waiting_.clear();
    int longestFade = 0;
    for (const auto& voice : playing_) {
        voice->stop();
        longestFade = std::max<int>(longestFade, voice->record().fadeOut());
    }
    // A playback that does not end by itself must not hold the user.
    giveUp_.start(longestFade + 3000);
}

} // namespace vemo::tool
