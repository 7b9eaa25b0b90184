#include "Cue.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include <sfx/model/CustomAudioException.h>

namespace vemo::tool {

namespace {

std::optional<std::uint64_t> asPlayerId(const std::string& text) {
    std::uint64_t id = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, id);
    return error == std::errc() && end == last ? std::optional(id) : std::nullopt;
}

} // namespace

Cue::Cue(Stage& stage, const audio::sfx::SfxDto& event)
    : stage_(stage), request_(event.eventId()), record_(event) {}

Cue::Cue(Stage& stage, std::uint64_t playerId)
    : stage_(stage),
      request_(std::to_string(playerId)),
      byPlayerId_(true),
      id_(playerId),
      record_(*stage.player(playerId)->SfxData()) {}

Cue::Cue(Stage& stage, std::string label, const audio::CustomAudioParameters& parameters)
    : stage_(stage),
      label_(std::move(label)),
      parameters_(parameters),
      record_(audio::sfx::SfxDto::builder().build()) {}

std::string Cue::label() const {
    if (!label_.empty()) {
        return label_;
    }
    return record_.name().empty() ? record_.eventId() : record_.name();
}

std::string Cue::title() const {
    std::string text = label() + " (";
    if (record_.type() != audio::USER_PROVIDED) {
        text += (label() == record_.eventId() ? "" : record_.eventId() + ", ") +
                record_.effectId() + ", ";
    }
    return text + "player " + std::to_string(id_) + ")";
}

bool Cue::isCalled(const std::string& text) const {
    return text == record_.name() || text == record_.eventId() || text == label_ ||
           text == std::to_string(id_);
}

void Cue::start_() {
    try {
        if (parameters_) {
            stage_.controller().play(*parameters_);
            id_ = stage_.playerOf(*parameters_).value();
        } else if (byPlayerId_ || stage_.hasPlayerOf(request_)) {
            id_ = stage_.controller().play(request_);
        } else {
            // Not asked for: what nobody answers to is answered with 0, which is a player's id.
            throw ToolError(ExitCode::Refused, label() + " is not loaded");
        }
        player_ = stage_.player(id_);
        record_ = player_ ? *player_->SfxData() : record_;
    } catch (const vemo::sfx::CustomAudioException& error) {
        throw ToolError(ExitCode::Refused, label() + ": " + error.what());
    } catch (const std::out_of_range&) {
        throw ToolError(ExitCode::UnknownEffect, "no player " + request_);
    }
    volume_ = record_.volume();
    fadeEnds_ = {};
    seconds_ = 0.0;
    ask_();
}

void Cue::halt_() {
    try {
        stage_.controller().stop(id_);
    } catch (const std::out_of_range&) {
        // It was removed, and has just ended.
    }
}

// The pointer is empty as soon as a removed player has played to its end.
bool Cue::done_() {
    ask_();
    return !player_ || player_->Done();
}

void Cue::ask_() {
    if (player_ && seconds_ <= 0.0) {
        const double answer = player_->GetDuration();
        // Of an installed effect it is twice the playing time.
        seconds_ = answer > 0.0 && record_.type() != audio::USER_PROVIDED ? answer / 2.0 : answer;
    }
}

bool Cue::fading() const {
    const bool fadingIn = record_.fadeIn() > 0 && elapsed() * 1000.0 < record_.fadeIn();
    return stopped() || fadingIn || Clock::now() < fadeEnds_;
}

void Cue::fadeTo(float volume, unsigned int milliseconds) {
    ask_(); // it may have begun since it was looked at
    begins();
    if (!begun() || !player_) {
        throw ToolError(ExitCode::Refused, label() + " does not sound yet");
    }
    if (fading()) {
        throw ToolError(ExitCode::Refused,
                        label() + " is fading; a second fade would end it (`stop` does that)");
    }
    player_->FadeTo(volume, milliseconds);
    volume_ = volume;
    fadeEnds_ = Clock::now() + std::chrono::milliseconds(milliseconds);
}

void Cue::setVolume(float volume) {
    try {
        const auto player = byPlayerId_ ? stage_.controller().GetPlayer(id_)
                                        : stage_.controller().GetPlayer(request_);
        player.value()->SetVolume(volume);
    } catch (const std::exception&) {
        throw ToolError(ExitCode::UnknownEffect, label() + " is not loaded");
    }
}

std::vector<std::unique_ptr<Cue>> cuesNamed(Stage& stage, ShowFile& show, const std::string& text) {
    std::vector<std::unique_ptr<Cue>> cues;
    for (const audio::sfx::SfxDto& event : show.named(text)) {
        cues.push_back(std::make_unique<Cue>(stage, event));
    }
    if (const auto id = asPlayerId(text); cues.empty() && id && stage.player(*id)) {
        cues.push_back(std::make_unique<Cue>(stage, *id));
    }
    return cues;
}

} // namespace vemo::tool
