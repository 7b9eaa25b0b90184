#include <iostream>
#include <memory>

#include "Commands.h"
#include "JsonOut.h"
#include "OutputDevices.h"

namespace vemo::tool {

namespace {

ExitCode devices(bool asJson) {
    JsonOut json;
    json.StartArray();
    for (const QAudioDevice& device : outputDevices()) {
        const std::string id = device.id().toStdString();
        const std::string description = device.description().toStdString();
        if (asJson) {
            json.StartObject();
            json.member("id", id);
            json.member("description", description);
            json.Key("default");
            json.Bool(device.isDefault());
            json.EndObject();
        } else {
            std::cout << (device.isDefault() ? "* " : "  ") << id << "  " << description << '\n';
        }
    }
    json.EndArray();
    if (asJson) {
        std::cout << json.text();
    }
    return ExitCode::Ok;
}

} // namespace

void addDevicesCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand(
        "devices", "List the output devices; `*` marks the default, which plays.");
    const auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "Write the list as JSON");
    command->callback([json, &chosen] { chosen = [json] { return devices(*json); }; });
}

} // namespace vemo::tool
