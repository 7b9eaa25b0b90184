#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sfx/model/CustomAudioParameters.h>

#include "ShowFile.h"
#include "Stage.h"
#include "Voice.h"

namespace vemo::tool {

/// An event of the show, or a user's audio file, on its player of the controller.
class Cue : public Voice {
public:
    /// Played by the id of its event.
    Cue(Stage& stage, const audio::sfx::SfxDto& event);
    /// Played by the id of its player, which exists.
    Cue(Stage& stage, std::uint64_t playerId);
    /// A user's audio file; `label` is what the user calls it.
    Cue(Stage& stage, std::string label, const audio::CustomAudioParameters& parameters);

    std::string label() const override;
    std::string title() const override;
    audio::sfx::SfxDto record() const override { return record_; }
    double seconds() const override { return seconds_; }

    std::uint64_t id() const { return id_; }
    /// True if the text is its name, its event id, its player id or the file as it was given.
    bool isCalled(const std::string& text) const;
    /// Fades what sounds. ToolError (Refused) while another fade is on, which would end the cue, or
    /// before it sounds.
    void fadeTo(float volume, unsigned int milliseconds);
    /// For the next time it is played; ToolError (UnknownEffect) when its player is gone.
    void setVolume(float volume);
    /// Where its volume is, or is fading to.
    float volume() const { return volume_; }
    bool fading() const;

private:
    void start_() override;
    void halt_() override;
    bool done_() override;
    void ask_();

    Stage& stage_;
    std::string label_;
    /// What to ask the controller for; nothing for a user's file.
    std::string request_;
    std::optional<audio::CustomAudioParameters> parameters_;
    bool byPlayerId_ = false;
    std::uint64_t id_ = 0;
    Stage::Player player_;
    /// As it was when the cue was started, which is how it sounds.
    audio::sfx::SfxDto record_;
    double seconds_ = 0.0;
    float volume_ = 0.0F;
    Clock::time_point fadeEnds_{};
};

/// The events with that name or id, or the player with that id. Empty when there is none.
std::vector<std::unique_ptr<Cue>> cuesNamed(Stage& stage, ShowFile& show, const std::string& text);

} // namespace vemo::tool
