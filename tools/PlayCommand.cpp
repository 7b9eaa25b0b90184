#include <cmath>
#include <memory>
#include <string>

#include "Commands.h"
#include "Install.h"
#include "OutputDevices.h"
#include "PlaySession.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

constexpr char DESCRIPTION[] =
    "Play effects through the library, one after the other or together. EFFECT is an id, an id\n"
    "without .sfx, or a display name. Ambient effects repeat without end unless --repeats says\n"
    "otherwise. Ctrl-C fades out and stops (exit code 130); a second one leaves at once. A stop\n"
    "during the fade-in ends the effect without a fade.";

constexpr unsigned short FADE_STEP_MS = 30;
constexpr std::size_t MOST_TOGETHER = 16;
constexpr double LONGEST_FADE_MS = 65535;
constexpr double MOST_REPEATS = 1e6;
constexpr double LONGEST_SECONDS = 86400;

/// Refuses what is not a number from `least` to `most`; unlike CLI::Range it refuses "nan" too.
CLI::Validator within(double least, double most) {
    const auto text = [](double value) { return CLI::detail::to_string(value); };
    const std::string range = text(least) + " to " + text(most);
    return CLI::Validator(
        [=](std::string& input) {
            double value = 0.0;
            const bool fits =
                CLI::detail::lexical_cast(input, value) && value >= least && value <= most;
            return fits ? std::string() : "'" + input + "' is not a number from " + range;
        },
        range);
}

std::vector<InstalledEffect> resolve(const Install& install,
                                     const std::vector<std::string>& texts) {
    std::vector<InstalledEffect> effects;
    for (const std::string& text : texts) {
        const InstalledEffect* effect = install.find(text);
        if (!effect) {
            throw ToolError(ExitCode::UnknownEffect, "no effect '" + text + "' in " +
                                                         install.folder().string() +
                                                         "; `vemo-sfx list` shows what is there");
        }
        effects.push_back(*effect);
    }
    return effects;
}

ExitCode play(PlayOptions options) {
    if (options.together && options.effects.size() > MOST_TOGETHER) {
        throw ToolError(ExitCode::Usage, "--together plays at most 16 effects");
    }
    if (options.fadeIn > 0 && options.fadeIn < FADE_STEP_MS) {
        complain("a fade-in below 30 ms has no step and would stay silent; it is made 30 ms");
        options.fadeIn = FADE_STEP_MS;
    }
    const auto effects = resolve(Install::open(options.install), options.effects);
    outputDevices();
    // Never destroyed: that would wait for threads which a dead audio server may hold for good.
    auto* session = new PlaySession(effects, options);
    session->run();
    return ExitCode::Ok;
}

void addSoundOptions(CLI::App& command, PlayOptions& options) {
    command.add_option("--volume", options.volume, "Linear gain, 1 is unity")
        ->check(within(0, 1))
        ->capture_default_str();
    command.add_option("--pan", options.pan, "0 left, 0.5 centre, 1 right")
        ->check(within(0, 1))
        ->capture_default_str();
    command.add_option("--reverb", options.reverb, "Gain of the echo, 0 is none")
        ->check(within(0, 1))
        ->capture_default_str();
    command.add_option("--fade-in", options.fadeIn, "Milliseconds")
        ->check(within(0, LONGEST_FADE_MS))
        ->capture_default_str();
    command.add_option("--fade-out", options.fadeOut, "Milliseconds, for a stop")
        ->check(within(0, LONGEST_FADE_MS))
        ->capture_default_str();
}

} // namespace

void addPlayCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand("play", DESCRIPTION);
    const auto options = std::make_shared<PlayOptions>();
    command->add_option("EFFECT", options->effects, "What to play")->required();
    command->add_option("--install", options->install, INSTALL_HELP)->type_name("FOLDER");
    addSoundOptions(*command, *options);
    command
        ->add_option("--repeats", options->repeats,
                     "Passes after the first; -1 repeats without end")
        ->check(within(-1, MOST_REPEATS));
    command
        ->add_option("--stop-after", options->stopAfter,
                     "Stop each effect with the fade-out, that many seconds after its start")
        ->check(within(0, LONGEST_SECONDS));
    command->add_flag("--together", options->together, "Play all at once instead of in turn");
    command->callback([options, &chosen] { chosen = [options] { return play(*options); }; });
}

} // namespace vemo::tool
