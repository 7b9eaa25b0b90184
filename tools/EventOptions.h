#pragma once

#include <optional>
#include <string>

#include "Install.h"
#include "SoundOptions.h"

namespace vemo::tool {

/// What is asked of an event of a show, as far as it was said.
struct EventOptions {
    std::optional<std::string> effect;
    std::optional<std::string> name;
    SoundOptions sound;
};

/// --name and the sound options.
void addEventOptions(CLI::App& command, EventOptions& options, Defaults defaults);

/// Replaces the effect, as `play` would resolve it, by its id. ToolError (UnknownEffect) when the
/// install does not have it. nullptr: takes it as an id, unchecked.
void resolveEffect(EventOptions& options, const Install* install);

/// Resolves the effect of a new event and fills in what was left open: the effect's name, and how
/// `play` would play it.
void completeNewEvent(EventOptions& options, const Install* install);

} // namespace vemo::tool
