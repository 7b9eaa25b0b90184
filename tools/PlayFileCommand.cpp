#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "Cue.h"
#include "OutputDevices.h"
#include "PlayOptions.h"
#include "Terminal.h"
#include "UserFile.h"

namespace vemo::tool {

namespace {

constexpr char DESCRIPTION[] =
    "Play audio files of your own, whatever the audio system decodes. FILE is a path or a URL.\n"
    "Ctrl-C fades out and stops (exit code 130); a second one leaves at once.";

struct Options {
    std::vector<std::string> files;
    SoundOptions sound;
    PlayOrder order;
};

ExitCode playFiles(Options options) {
    if (options.sound.lengthenFadeIn()) {
        complain(FADE_IN_NOTE);
    }
    std::vector<audio::CustomAudioParameters> files;
    for (const std::string& file : options.files) {
        files.push_back(userFile(file, options.sound));
    }
    outputDevices();
    Stage stage(std::make_unique<DataRoot>());
    std::vector<std::unique_ptr<Voice>> voices;
    for (std::size_t i = 0; i < files.size(); ++i) {
        voices.push_back(std::make_unique<Cue>(stage, options.files[i], files[i]));
    }
    return playAll(std::move(voices), options.order);
}

} // namespace

void addPlayFileCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand("play-file", DESCRIPTION);
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "What to play")->required();
    addSoundOptions(*command, options->sound, Defaults::Shown);
    addOrderOptions(*command, options->order);
    command->callback([options, &chosen] { chosen = [options] { return playFiles(*options); }; });
}

} // namespace vemo::tool
