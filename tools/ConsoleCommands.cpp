#include "ConsoleCommands.h"

#include <algorithm>

#include <QProcess>

#include "ShowTable.h"
#include "Terminal.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

constexpr char HELP[] =
    "play CUE|FILE...     a cue is the name or id of an event, or the id of a player;\n"
    "                     a file is the path or URL of an audio file of yours\n"
    "stop [CUE...]        fades out; without a cue everything\n"
    "fade CUE VOLUME MS   fades what plays\n"
    "volume CUE VOLUME    of what plays and of the next time, until the event is edited\n"
    "status               what plays\n"
    "list                 the events of the show\n"
    "add EFFECT, edit EVENT, remove EVENT...\n"
    "                     change the show; --help behind them tells the options\n"
    "reload               reads the events again\n"
    "quit                 fades out and leaves; so does Ctrl-C\n"
    "Texts with spaces stand in double quotes. Short: p, s, f, v, q.";

std::vector<std::string> split(const std::string& line) {
    std::vector<std::string> words;
    for (const QString& word : QProcess::splitCommand(QString::fromStdString(line))) {
        words.push_back(word.toStdString());
    }
    return words;
}

struct Options {
    std::vector<std::string> cues;
    std::string cue;
    float volume = 0.0F;
    unsigned int milliseconds = 0;
    EventOptions event;
};

} // namespace

ConsoleCommands::ConsoleCommands(Stage& stage, ShowFile& show, const Install& install,
                                 CueList& cues, CueList::Say say)
    : stage_(stage), show_(show), install_(install), cues_(cues), say_(std::move(say)) {}

ConsoleCommands::Outcome ConsoleCommands::execute(const std::string& line) {
    try {
        if (std::count(line.begin(), line.end(), '"') % 2 != 0) {
            throw ToolError(ExitCode::Usage, "a quote is not closed");
        }
        const auto words = split(line);
        return words.empty() || words.front().starts_with('#') ? Outcome{} : run_(words);
    } catch (const CLI::ParseError& error) {
        say_("error: " + std::string(error.what()) + " (`help` shows the commands)");
    } catch (const std::exception& error) {
        say_("error: " + std::string(error.what()));
    }
    return {};
}

ConsoleCommands::Outcome ConsoleCommands::run_(const std::vector<std::string>& words) {
    Options options;
    Outcome outcome;
    CLI::App app("", "");
    app.set_help_flag();
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    const auto command = [&](const char* name, const char* shortName, const auto& action) {
        CLI::App* added = app.add_subcommand(name, "");
        if (*shortName != '\0') {
            added->alias(shortName);
        }
        added->set_help_flag("--help");
        added->final_callback(action);
        return added;
    };
    // With what the command answers as soon as the events are loaded.
    const auto load = [&](const std::string& answer) { outcome = {After::Load, answer}; };

    command("play", "p",
            [&] {
                for (const std::string& cue : options.cues) {
                    cues_.play(cue);
                }
            })
        ->add_option("CUE", options.cues, "What to play")
        ->required();
    command("stop", "s", [&] {
        for (const std::string& cue : options.cues) {
            cues_.stop(cue);
        }
        if (options.cues.empty()) {
            cues_.stopAll();
        }
    })->add_option("CUE", options.cues, "What to stop");
    const auto addVolume = [&](CLI::App& to) {
        to.add_option("CUE", options.cue, "Which one")->required();
        to.add_option("VOLUME", options.volume, "0 to 1")->required()->check(within(0, 1));
    };
    CLI::App* fade = command(
        "fade", "f", [&] { cues_.fade(options.cue, options.volume, options.milliseconds); });
    addVolume(*fade);
    fade->add_option("MS", options.milliseconds, "Milliseconds")
        ->required()
        ->check(within(0, LONGEST_FADE_MS));
    addVolume(*command("volume", "v", [&] { cues_.setVolume(options.cue, options.volume); }));
    command("status", "", [&] { cues_.status(); });
    command("list", "", [&] { list_(); });

    CLI::App* add = command("add", "", [&] { load(add_(options.event) + " added"); });
    add->add_option("EFFECT", options.event.effect, "As `play` takes it")->required();
    addEventOptions(*add, options.event, Defaults::Shown);
    CLI::App* edit =
        command("edit", "", [&] { load(edit_(options.cue, options.event) + " changed"); });
    edit->add_option("EVENT", options.cue, "Which one")->required();
    edit->add_option("--effect", options.event.effect, "As `play` takes it");
    addEventOptions(*edit, options.event, Defaults::Hidden);
    command("remove", "",
            [&] {
                std::string ids;
                for (const std::string& id : show_.remove(options.cues)) {
                    ids += id + " ";
                }
                load(ids + "removed");
            })
        ->add_option("EVENT", options.cues, "Which ones")
        ->required();
    command("reload", "", [&] { load(countText(show_.events().size(), "event") + " loaded"); });
    command("help", "?", [&] { say_(HELP); });
    command("quit", "q", [&] { outcome.after = After::Quit; })->alias("exit");

    std::vector<std::string> backwards(words.rbegin(), words.rend());
    try {
        app.parse(backwards);
    } catch (const CLI::CallForHelp&) {
        say_(app.get_subcommands().front()->help());
    } catch (const CLI::ParseError&) {
        if (!app.get_subcommands().empty()) {
            throw;
        }
        throw ToolError(ExitCode::Usage,
                        "no command '" + words.front() + "' (`help` shows the commands)");
    }
    return outcome;
}

void ConsoleCommands::list_() {
    const auto events = show_.events();
    if (events.empty()) {
        say_("no events");
        return;
    }
    for (const std::string& line : showTable(events)) {
        say_(line);
    }
}

std::string ConsoleCommands::add_(EventOptions options) {
    completeNewEvent(options, &install_);
    if (options.sound.lengthenFadeIn()) {
        say_(FADE_IN_NOTE);
    }
    return show_.add(options);
}

std::string ConsoleCommands::edit_(const std::string& event, EventOptions options) {
    resolveEffect(options, &install_);
    if (options.sound.lengthenFadeIn()) {
        say_(FADE_IN_NOTE);
    }
    const audio::sfx::SfxDto record = show_.require(event);
    show_.edit(record, options);
    return record.eventId();
}

} // namespace vemo::tool
