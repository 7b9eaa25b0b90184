#include <memory>
#include <string>

#include <QThreadPool>

#include "Commands.h"
#include "Cue.h"
#include "OutputDevices.h"
#include "PlayOptions.h"
#include "PlayVoice.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

constexpr char DESCRIPTION[] =
    "Play effects through the library, one after the other or together. EFFECT is an id, an id\n"
    "without .sfx, or a display name; with --show it is a cue: the id or name of an event, or the\n"
    "id of a player, which count from 0 in the order of the events. Ambient effects repeat "
    "without\n"
    "end unless --repeats says otherwise. Ctrl-C fades out and stops (exit code 130); a second "
    "one\n"
    "leaves at once. A stop during the fade-in ends the effect without a fade.";

struct Options {
    std::vector<std::string> effects;
    std::string install;
    std::string show;
    SoundOptions sound;
    PlayOrder order;
};

using Voices = std::vector<std::unique_ptr<Voice>>;

Voices ofEffects(const Options& options) {
    const Install install = Install::open(options.install);
    std::vector<InstalledEffect> effects;
    for (const std::string& text : options.effects) {
        effects.push_back(install.require(text));
    }
    outputDevices();
    const auto pool = std::make_shared<QThreadPool>();
    pool->setThreadPriority(QThread::TimeCriticalPriority);
    pool->setMaxThreadCount(MOST_TOGETHER);
    Voices voices;
    for (const InstalledEffect& effect : effects) {
        voices.push_back(std::make_unique<PlayVoice>(effect, options.sound, pool));
    }
    return voices;
}

ExitCode playShow(const Options& options) {
    ShowFile show(options.show, ShowFile::Missing::Refused);
    Stage stage(std::make_unique<DataRoot>(Install::open(options.install).folder()));
    outputDevices();
    stage.loadAndWait();
    Voices voices;
    for (const std::string& text : options.effects) {
        auto cues = cuesNamed(stage, show, text);
        if (cues.empty()) {
            throw ToolError(ExitCode::UnknownEffect, "no cue '" + text + "' in " + show.path());
        }
        std::move(cues.begin(), cues.end(), std::back_inserter(voices));
    }
    return playAll(std::move(voices), options.order);
}

ExitCode play(Options options) {
    if (!options.show.empty()) {
        return playShow(options);
    }
    if (options.sound.lengthenFadeIn()) {
        complain(FADE_IN_NOTE);
    }
    options.sound.complete();
    return playAll(ofEffects(options), options.order);
}

} // namespace

ExitCode playAll(std::vector<std::unique_ptr<Voice>> voices, const PlayOrder& order) {
    if (order.together && voices.size() > MOST_TOGETHER) {
        throw ToolError(ExitCode::Usage, "--together plays at most 16 at once");
    }
    // Never destroyed: that would wait for threads which a dead audio server may hold for good.
    auto* session = new PlaySession(std::move(voices), order);
    session->run();
    return ExitCode::Ok;
}

void addOrderOptions(CLI::App& command, PlayOrder& order) {
    command
        .add_option("--stop-after", order.stopAfter,
                    "Stop each one with the fade-out, that many seconds after its start")
        ->check(within(0, LONGEST_SECONDS));
    command.add_flag("--together", order.together, "Play all at once instead of in turn");
}

void addPlayCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand("play", DESCRIPTION);
    const auto options = std::make_shared<Options>();
    command->add_option("EFFECT", options->effects, "What to play")->required();
    command->add_option("--install", options->install, installHelp())->type_name("FOLDER");
    CLI::Option* show =
        command->add_option("--show", options->show, "Play cues of this show, as its events say")
            ->type_name("FILE");
    for (CLI::Option* option : addSoundOptions(*command, options->sound, Defaults::Shown)) {
        option->excludes(show);
    }
    addOrderOptions(*command, options->order);
    command->callback([options, &chosen] { chosen = [options] { return play(*options); }; });
}

} // namespace vemo::tool
