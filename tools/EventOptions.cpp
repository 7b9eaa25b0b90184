#include "EventOptions.h"

#include <algorithm>
#include <cctype>

#include "ToolError.h"

namespace vemo::tool {

namespace {

bool looksLikeAnEventId(const std::string& name) {
    constexpr std::string_view START = "sfx.";
    return name.starts_with(START) && name.size() > START.size() &&
           std::all_of(name.begin() + START.size(), name.end(),
                       [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::string checkName(const std::string& name) {
    if (looksLikeAnEventId(name)) {
        return "'" + name + "' would be taken for an event id";
    }
    const bool plain =
        std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::iscntrl(c) == 0; });
    return plain ? std::string() : "a name is one line without control characters";
}

const InstalledEffect* find(const EventOptions& options, const Install* install) {
    return install && options.effect ? &install->require(*options.effect) : nullptr;
}

} // namespace

void addEventOptions(CLI::App& command, EventOptions& options, Defaults defaults) {
    command.add_option("--name", options.name, "Name, under which it can be played")
        ->check(CLI::Validator([](std::string& name) { return checkName(name); }, ""))
        ->default_str(defaults == Defaults::Shown ? "that of the effect" : "");
    addSoundOptions(command, options.sound, defaults);
}

void resolveEffect(EventOptions& options, const Install* install) {
    if (const InstalledEffect* effect = find(options, install)) {
        options.effect = effect->id;
    }
}

void completeNewEvent(EventOptions& options, const Install* install) {
    const InstalledEffect* effect = find(options, install);
    resolveEffect(options, install);
    if (!options.name) {
        options.name = effect ? effect->name : *options.effect;
    }
    if (effect && effect->ambient && !options.sound.repeats) {
        options.sound.repeats = -1; // an event does not say that its effect is ambient
    }
    options.sound.complete();
}

} // namespace vemo::tool
