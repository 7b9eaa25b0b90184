#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <sfx/source/EffectCipher.h>

#include "Commands.h"
#include "Interrupt.h"
#include "PathText.h"
#include "SourceAudio.h"
#include "SourceList.h"
#include "StagedFolder.h"
#include "System.h"
#include "Terminal.h"

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

constexpr char DESCRIPTION[] =
    "Make an install folder from audio files: the effects, enciphered, and manifest.json.\n"
    "Ogg Vorbis goes in as it is; WAV, FLAC, AIFF and what else libsndfile reads is encoded to "
    "Vorbis.\nEvery file is decoded as a check. The folder is written aside and put in place at "
    "the "
    "end: when\nanything fails nothing is left behind and an install that stood there is "
    "untouched.";

struct PackOptions {
    std::vector<std::string> sources;
    std::string out;
    std::vector<std::string> ambient;
    std::string names;
    bool force = false;
};

/// An empty folder may be filled; an install may be replaced with --force, anything else never.
void checkTarget(const fs::path& out, bool force) {
    std::error_code error;
    const fs::file_status status = fs::status(out, error);
    if (!fs::exists(status)) {
        return;
    }
    const std::string refused = pathText(out) + ": ";
    if (!fs::is_directory(status)) {
        throw ToolError(ExitCode::Refused, refused + "is not a folder");
    }
    const bool isEmpty = fs::is_empty(out, error);
    if (error) {
        throw ToolError(ExitCode::Refused, refused + "cannot be read: " + reasonText(error));
    }
    if (isEmpty) {
        return;
    }
    if (!fs::exists(out / "manifest.json", error)) {
        throw ToolError(ExitCode::Refused,
                        refused + "holds files but no manifest.json; it is no install and stays");
    }
    if (!force) {
        throw ToolError(ExitCode::Refused, refused + "holds an install; --force replaces it");
    }
}

void packOne(const Source& source, StagedFolder& stage, Terminal& terminal) {
    PackedAudio packed;
    try {
        packed = packAudio(source.file, Interrupt::checkpoint);
    } catch (const ToolError&) {
        throw;
    } catch (const std::exception& error) {
        throw ToolError(ExitCode::Refused, pathText(source.file) + ": " + error.what());
    }
    audio::ApplyEffectCipher(packed.vorbis.data(), packed.vorbis.size());
    stage.write(source.entry.path, packed.vorbis.data(), packed.vorbis.size());
    terminal.line(source.entry.id + (source.entry.ambient ? " (ambient)" : "") + "  " +
                  secondsText(packed.seconds) + "  " +
                  (packed.encoded ? "encoded from " : "as it is from ") + pathText(source.file));
}

ExitCode pack(const PackOptions& options) {
    const Interrupt interrupt;
    Terminal terminal;
    const NamesTable names =
        options.names.empty() ? NamesTable{} : readNames(PathFromUtf8(options.names));
    const SourceList list = collectSources(options.sources, options.ambient, names, options.names);
    for (const fs::path& file : list.leftOut) {
        complain(pathText(file) + " is no audio file and is left out");
    }
    const fs::path out = PathFromUtf8(options.out);
    checkTarget(out, options.force);

    StagedFolder stage(out);
    std::vector<ManifestEntry> entries;
    for (const Source& source : list.sources) {
        terminal.progress("packing " + std::to_string(entries.size() + 1) + " of " +
                          std::to_string(list.sources.size()) + ": " +
                          pathText(source.file.filename()));
        packOne(source, stage, terminal);
        entries.push_back(source.entry);
    }
    const std::string manifest = writeManifest(entries);
    stage.write("manifest.json", reinterpret_cast<const unsigned char*>(manifest.data()),
                manifest.size());
    Interrupt::checkpoint();
    stage.commit();
    terminal.line("packed " + countText(entries.size(), "effect") + " into " + options.out);
    return ExitCode::Ok;
}

} // namespace

void addPackCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand("pack", DESCRIPTION);
    const auto options = std::make_shared<PackOptions>();
    command->add_option("SOURCES", options->sources, "Audio files, and folders of audio files")
        ->required();
    command->add_option("--out", options->out, "The install folder to make")
        ->required()
        ->check([](const std::string& text) { return text.empty() ? std::string("is empty") : ""; })
        ->type_name("FOLDER");
    command
        ->add_option(
            "--ambient", options->ambient,
            "Effects whose file name or id fits the glob PATTERN are ambient; may be given "
            "more than once")
        ->type_name("PATTERN")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command
        ->add_option("--names", options->names,
                     "Lines `file,id,name` that give sources another id or display name")
        ->type_name("CSV");
    command->add_flag("--force", options->force, "Replace an install that stands at FOLDER");
    command->callback([options, &chosen] { chosen = [options] { return pack(*options); }; });
}

} // namespace vemo::tool
