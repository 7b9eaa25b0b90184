#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "EffectAudio.h"
#include "Install.h"
#include "JsonOut.h"
#include "PathText.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

struct Row {
    const InstalledEffect* effect;
    /// Without sound when the effect does not decode.
    EffectAudio audio;
};

const char* kind(const InstalledEffect& effect) {
    return effect.ambient ? "ambient" : "primary";
}

Row examine(const InstalledEffect& effect, bool& allDecode) {
    try {
        EffectAudio audio = decodeEffect(PathFromUtf8(effect.path));
        return {&effect, std::move(audio)};
    } catch (const std::exception& error) {
        complain(effect.path + ": " + error.what());
        allDecode = false;
        return {&effect, {}};
    }
}

void writeJson(const Row& row, JsonOut& json) {
    json.StartObject();
    json.member("id", row.effect->id);
    json.member("kind", kind(*row.effect));
    json.member("name", row.effect->name);
    json.Key("seconds");
    if (row.audio.channels != 0) {
        json.Double(row.audio.seconds());
    } else {
        json.Null();
    }
    json.Key("channels");
    json.Uint(row.audio.channels);
    json.Key("rate");
    json.Uint(row.audio.rate);
    json.member("path", row.effect->path);
    json.EndObject();
}

class Table {
public:
    explicit Table(const Install& install) {
        for (const InstalledEffect& effect : install.effects()) {
            idWidth_ = std::max(idWidth_, displayWidth(effect.id));
            nameWidth_ = std::max(nameWidth_, displayWidth(effect.name));
        }
        write_("ID", "KIND", "NAME", "SECONDS", "CHANNELS", "RATE", "PATH");
    }
    void write(const Row& row) const {
        const bool decodes = row.audio.channels != 0;
        write_(row.effect->id, kind(*row.effect), row.effect->name,
               decodes ? secondsText(row.audio.seconds()) : "-",
               decodes ? std::to_string(row.audio.channels) : "-",
               decodes ? std::to_string(row.audio.rate) : "-", row.effect->path);
    }

private:
    void write_(const std::string& id, const std::string& kindText, const std::string& name,
                const std::string& seconds, const std::string& channels, const std::string& rate,
                const std::string& path) const {
        std::cout << padded(id, idWidth_ + 2) << padded(kindText, 9) << padded(name, nameWidth_ + 2)
                  << std::right << std::setw(9) << seconds << std::setw(10) << channels
                  << std::setw(8) << rate << "  " << path << '\n';
    }

    std::size_t idWidth_ = 2;
    std::size_t nameWidth_ = 4;
};

ExitCode list(const std::string& folder, bool asJson) {
    const Install install = Install::open(folder);
    bool allDecode = true;
    if (asJson) {
        JsonOut json;
        json.StartArray();
        for (const InstalledEffect& effect : install.effects()) {
            writeJson(examine(effect, allDecode), json);
        }
        json.EndArray();
        std::cout << json.text();
    } else {
        const Table table(install);
        for (const InstalledEffect& effect : install.effects()) {
            table.write(examine(effect, allDecode));
        }
    }
    return allDecode ? ExitCode::Ok : ExitCode::Refused;
}

} // namespace

void addListCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand(
        "list",
        "List the effects of an install: id, kind, name, playing time, channels, rate, path.");
    const auto folder = std::make_shared<std::string>();
    const auto json = std::make_shared<bool>(false);
    command->add_option("--install", *folder, installHelp())->type_name("FOLDER");
    command->add_flag("--json", *json, "Write the list as JSON");
    command->callback(
        [folder, json, &chosen] { chosen = [folder, json] { return list(*folder, *json); }; });
}

} // namespace vemo::tool
