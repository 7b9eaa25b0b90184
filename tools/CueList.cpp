#include "CueList.h"

#include <algorithm>

#include "PlayScreen.h"
#include "Terminal.h"
#include "ToolError.h"
#include "UserFile.h"

namespace vemo::tool {

namespace {

std::string clockText(double seconds) {
    const auto whole = static_cast<int>(seconds);
    return std::to_string(whole / 60) + (whole % 60 < 10 ? ":0" : ":") + std::to_string(whole % 60);
}

std::string summaryOf(const Cue& cue) {
    const auto all = cue.allSeconds();
    return cue.label() + " " + clockText(cue.elapsed()) +
           (all && *all > 0.0 ? "/" + clockText(*all) : "") + (cue.stopped() ? " fading" : "");
}

} // namespace

CueList::CueList(Stage& stage, ShowFile& show, Say say)
    : stage_(stage), show_(show), say_(std::move(say)) {}

std::vector<Cue*> CueList::running_(const std::string& cue) const {
    std::vector<Cue*> found;
    for (const auto& running : cues_) {
        if (running->isCalled(cue)) {
            found.push_back(running.get());
        }
    }
    return found;
}

void CueList::refuse_(const std::string& cue) const {
    if (!cuesNamed(stage_, show_, cue).empty()) {
        throw ToolError(ExitCode::Refused, cue + " does not play");
    }
    throw ToolError(ExitCode::UnknownEffect, "no cue '" + cue + "'");
}

void CueList::play(const std::string& cueOrFile) {
    auto starting = cuesNamed(stage_, show_, cueOrFile);
    if (starting.empty()) {
        if (!userFileUrl(cueOrFile)) {
            throw ToolError(ExitCode::UnknownEffect, "no cue and no file '" + cueOrFile + "'");
        }
        starting.push_back(std::make_unique<Cue>(stage_, cueOrFile, userFile(cueOrFile, {})));
    }
    for (auto& cue : starting) {
        cue->play();
        if (cue->seconds() < 0.0) {
            throw ToolError(cue->fault().value());
        }
        // A player that plays already is done when its last playback is.
        std::erase_if(cues_, [&](const auto& running) { return running->id() == cue->id(); });
        cue->begins();
        say_(startText(*cue));
        cues_.push_back(std::move(cue));
    }
}

void CueList::stop_(Cue& cue) const {
    cue.stop();
    say_("stopping " + cue.label());
}

void CueList::stop(const std::string& cue) {
    const auto running = running_(cue);
    if (running.empty()) {
        refuse_(cue);
    }
    for (Cue* const each : running) {
        stop_(*each);
    }
}

void CueList::stopAll() {
    if (cues_.empty()) {
        say_("nothing plays");
    }
    for (const auto& cue : cues_) {
        stop_(*cue);
    }
}

void CueList::stopEndless() {
    for (const auto& cue : cues_) {
        if (!cue->allSeconds() && !cue->stopped()) {
            stop_(*cue);
        }
    }
}

void CueList::fade(const std::string& cue, float volume, unsigned int milliseconds) {
    const auto running = running_(cue);
    if (running.empty()) {
        refuse_(cue);
    }
    const unsigned int heard = std::max<unsigned int>(milliseconds, FADE_STEP_MS);
    for (Cue* const each : running) {
        each->fadeTo(volume, heard);
        say_("fading " + each->label() + " to " + numberText(volume) + " in " +
             std::to_string(heard) + " ms");
    }
}

void CueList::setVolume(const std::string& cue, float volume) {
    const auto running = running_(cue);
    for (Cue* const each : running) {
        each->fadeTo(volume, FADE_STEP_MS);
    }
    auto known = cuesNamed(stage_, show_, cue);
    if (known.empty() && running.empty()) {
        refuse_(cue);
    }
    for (const auto& each : known) {
        each->setVolume(volume);
    }
    say_("volume of " + cue + " is " + numberText(volume));
}

void CueList::status() const {
    if (cues_.empty()) {
        say_("nothing plays");
    }
    for (const auto& cue : cues_) {
        const bool fading = cue->fading() && !cue->stopped();
        say_(statusText(*cue) + "  " + cue->record().eventId() + ", player " +
             std::to_string(cue->id()) + "  " + (fading ? "fading to volume " : "volume ") +
             numberText(cue->volume()));
    }
}

std::string CueList::summary(std::size_t columns) const {
    std::string text;
    std::size_t shown = 0;
    for (const auto& cue : cues_) {
        const std::string longer = text + (text.empty() ? "" : " | ") + summaryOf(*cue);
        if (displayWidth(longer) > columns) {
            break;
        }
        text = longer;
        ++shown;
    }
    if (shown == cues_.size()) {
        return text;
    }
    return shown == 0 ? countText(cues_.size(), "cue")
                      : text + " +" + std::to_string(cues_.size() - shown);
}

void CueList::look() {
    for (auto& cue : cues_) {
        cue->begins();
        if (!cue->over()) {
            continue;
        }
        const auto fault = cue->fault();
        say_(fault ? std::string("failed: ") + fault->what() : endText(*cue));
        cue.reset();
    }
    std::erase(cues_, nullptr);
}

void CueList::tellFailure(const std::string& message, const std::string& what) const {
    const bool known = std::any_of(cues_.begin(), cues_.end(), [&](const auto& cue) {
        return what.starts_with(cue->record().effectPath() + ":");
    });
    if (!known) {
        say_("error: " + (message == what ? what : what + " - " + message));
    }
}

int CueList::longestFadeOut() const {
    int longest = 0;
    for (const auto& cue : cues_) {
        longest = std::max<int>(longest, cue->record().fadeOut());
    }
    return longest;
}

} // namespace vemo::tool
