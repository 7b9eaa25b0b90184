#include "Voice.h"

#include <algorithm>
#include <cmath>

#include "LibraryLog.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

// A sink may take its data ahead of time; a playback that ends earlier than that was cut off.
constexpr double MOST_AHEAD_SECONDS = 2.5;
// Where the library's fades start from and end at.
constexpr double FADE_FLOOR = 0.0001;
// How the library's log begins when it has no sound to play; what follows names the file.
constexpr char NOTHING[] = "nothing to play: ";

bool removeStart(std::string& text, const std::string& start) {
    const bool found = text.starts_with(start);
    if (found) {
        text.erase(0, start.size());
    }
    return found;
}

} // namespace

void Voice::play() {
    faultsBefore_ = playbackFaults();
    startedAt_ = Clock::now();
    stoppedAt_.reset();
    endedAt_.reset();
    begun_ = false;
    start_();
}

void Voice::stop() {
    if (started() && !stopped() && !over()) {
        stoppedAt_ = Clock::now();
        halt_();
    }
}

bool Voice::begins() {
    if (!started() || begun_ || seconds() <= 0.0) {
        return false;
    }
    if (!endedAt_) {
        startedAt_ = Clock::now();
    }
    begun_ = true;
    return true;
}

bool Voice::over() {
    if (!started() || !done_()) {
        return false;
    }
    if (!endedAt_) {
        endedAt_ = Clock::now();
    }
    return true;
}

std::optional<double> Voice::allSeconds() const {
    const int repeats = record().repeats();
    return repeats < 0 ? std::nullopt : std::optional(std::max(seconds(), 0.0) * (repeats + 1.0));
}

double Voice::elapsed() const {
    return started() ? secondsBetween(*startedAt_, endedAt_.value_or(Clock::now())) : 0.0;
}

double Voice::fadeGain() const {
    const audio::sfx::SfxDto how = record();
    const double volume = std::max<double>(how.volume(), FADE_FLOOR);
    if (stopped() && how.fadeOut() > 0) {
        const double part = secondsBetween(*stoppedAt_, Clock::now()) * 1000.0 / how.fadeOut();
        return std::pow(FADE_FLOOR / volume, std::min(part, 1.0));
    }
    // As the library has it: a fade-in that is not shorter than its idea of the duration, twice
    // the playing time, is left out.
    if (how.fadeIn() > 0 && seconds() * 2000.0 > how.fadeIn()) {
        const double part = elapsed() * 1000.0 / how.fadeIn();
        return std::pow(FADE_FLOOR / volume, 1.0 - std::min(part, 1.0));
    }
    return 1.0;
}

std::string Voice::complaint_() const {
    const std::string path = record().effectPath();
    std::string complaint;
    for (std::string text : playbackFaultsSince(faultsBefore_)) {
        const bool ofAFile = removeStart(text, NOTHING);
        if (ofAFile && (path.empty() || !removeStart(text, path + ": "))) {
            continue; // another one's
        }
        complaint = ofAFile ? "cannot be decoded (" + text + ")" : text;
    }
    return complaint;
}

std::optional<ToolError> Voice::fault() const {
    if (stopped()) {
        return std::nullopt;
    }
    const auto error = [this](ExitCode code, const std::string& text) {
        return ToolError(code, label() + ": " + text);
    };
    if (seconds() < 0.0) {
        return error(ExitCode::UnknownEffect, "its effect is not installed");
    }
    const std::string complaint = complaint_();
    if (seconds() <= 0.0) {
        return error(ExitCode::Refused, complaint.empty() ? "there is nothing to play" : complaint);
    }
    if (!complaint.empty()) {
        return error(ExitCode::NoAudio, complaint);
    }
    const auto all = allSeconds();
    if (!all || elapsed() + MOST_AHEAD_SECONDS < *all) {
        return error(ExitCode::NoAudio, "the playback broke off after " + secondsText(elapsed()));
    }
    return std::nullopt;
}

} // namespace vemo::tool
