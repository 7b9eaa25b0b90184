#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "EventOptions.h"
#include "ShowFile.h"
#include "ShowTable.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

struct Options {
    std::string file;
    EventOptions event;
    std::vector<std::string> events;
    std::string install;
    bool noCheck = false;
    bool json = false;
};

using Run = ExitCode (*)(Options&);

std::optional<Install> installToCheck(const Options& options) {
    return options.noCheck || !options.event.effect ? std::nullopt
                                                    : std::optional(Install::open(options.install));
}

ExitCode list(Options& options) {
    ShowFile show(options.file, ShowFile::Missing::Refused);
    if (options.json) {
        std::cout << showJson(show.events());
        return ExitCode::Ok;
    }
    for (const std::string& line : showTable(show.events())) {
        std::cout << line << '\n';
    }
    return ExitCode::Ok;
}

void lengthenFadeIn(Options& options) {
    if (options.event.sound.lengthenFadeIn()) {
        complain(FADE_IN_NOTE);
    }
}

ExitCode add(Options& options) {
    const auto install = installToCheck(options);
    completeNewEvent(options.event, install ? &*install : nullptr);
    lengthenFadeIn(options);
    ShowFile show(options.file, ShowFile::Missing::Created);
    std::cout << show.add(options.event) << '\n';
    return ExitCode::Ok;
}

ExitCode edit(Options& options) {
    const auto install = installToCheck(options);
    resolveEffect(options.event, install ? &*install : nullptr);
    lengthenFadeIn(options);
    ShowFile show(options.file, ShowFile::Missing::Refused);
    show.edit(show.require(options.events.front()), options.event);
    return ExitCode::Ok;
}

ExitCode remove(Options& options) {
    ShowFile show(options.file, ShowFile::Missing::Refused);
    show.remove(options.events);
    return ExitCode::Ok;
}

void addCheckOptions(CLI::App& command, Options& options) {
    command.add_option("--install", options.install, installHelp())->type_name("FOLDER");
    command.add_flag("--no-check", options.noCheck,
                     "Take the effect as an id, whether or not an install has it");
}

} // namespace

void addShowCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand(
        "show", "Edit a show: a file of events, each of which plays an effect in its way.\n"
                "EVENT is the id of an event, or a name that only one event has.");
    command->require_subcommand(1);
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "The show file")->required();
    const auto verb = [&](const char* name, const char* description, Run run) {
        CLI::App* added = command->add_subcommand(name, description);
        added->callback(
            [options, run, &chosen] { chosen = [options, run] { return run(*options); }; });
        return added;
    };

    CLI::App* listing = verb("list", "List the events.", list);
    listing->add_flag("--json", options->json, "Write the list as JSON");

    CLI::App* adding = verb("add",
                            "Add an event and print its id. Makes the show if there is none. An\n"
                            "ambient effect repeats without end unless --repeats says otherwise.",
                            add);
    adding->add_option("EFFECT", options->event.effect, "As `play` takes it")->required();
    addEventOptions(*adding, options->event, Defaults::Shown);
    addCheckOptions(*adding, *options);

    CLI::App* editing = verb("edit", "Change what is said of an event, and nothing else.", edit);
    editing->add_option("EVENT", options->events, "Which one")->required()->expected(1);
    editing->add_option("--effect", options->event.effect, "As `play` takes it");
    addEventOptions(*editing, options->event, Defaults::Hidden);
    addCheckOptions(*editing, *options);

    CLI::App* removing =
        verb("remove", "Remove events: all of those named or, on a wrong one, none.", remove);
    removing->add_option("EVENT", options->events, "Which ones")->required();
}

} // namespace vemo::tool
