#include <iostream>
#include <memory>

#include <QAudioDevice>
#include <QMediaDevices>

#include "Commands.h"
#include "JsonOut.h"
#include "OutputDevices.h"

namespace vemo::tool {

namespace {

ExitCode devices(bool asJson) {
    const auto all = outputDevices();
    const std::string defaultId = QMediaDevices::defaultAudioOutput().id().toStdString();
    JsonOut json;
    json.StartArray();
    for (const audio::AudioDevice& device : all) {
        const bool isDefault = device.idText == defaultId;
        if (asJson) {
            json.StartObject();
            json.member("id", device.idText);
            json.member("description", device.name);
            json.Key("default");
            json.Bool(isDefault);
            json.EndObject();
        } else {
            std::cout << (isDefault ? "* " : "  ") << device.idText << "  " << device.name << '\n';
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
