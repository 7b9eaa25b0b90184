#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Commands.h"
#include "EffectAudio.h"
#include "Install.h"
#include "JsonOut.h"
#include "ManifestText.h"
#include "PathText.h"
#include "Terminal.h"

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

constexpr char DESCRIPTION[] =
    "Check an install: decipher and decode every effect that manifest.json lists, and report each\n"
    "fault with its file. Exit code 1 when there is a fault.";

struct Finding {
    std::string file;
    std::string text;
};

struct Report {
    std::size_t effects = 0;
    std::vector<Finding> faults;
    std::vector<Finding> notes;
};

void checkCount(const ManifestText& manifest, bool ambient, int declared, Report& report) {
    const auto listed = std::count_if(manifest.entries.begin(), manifest.entries.end(),
                                      [&](const auto& entry) { return entry.ambient == ambient; });
    if (declared != listed) {
        report.faults.push_back(
            {"manifest.json", std::string(ambient ? "\"ambientCount\"" : "\"count\"") + " is " +
                                  std::to_string(declared) + " but " + std::to_string(listed) +
                                  " are listed"});
    }
}

void checkEffect(const fs::path& folder, const ManifestEntry& entry, const fs::path& relative,
                 Report& report) {
    if (relative.has_root_path() || relative.empty() || *relative.begin() == "..") {
        report.faults.push_back({entry.path, "leads out of the install folder"});
        return;
    }
    std::error_code ignored; // reading it tells
    if (fs::status(folder / relative, ignored).type() == fs::file_type::not_found) {
        report.faults.push_back({entry.path, "missing"});
        return;
    }
    try {
        decodeEffect(folder / relative);
    } catch (const std::exception& error) {
        report.faults.push_back({entry.path, error.what()});
    }
}

void noteUnlisted(const fs::path& folder, const std::set<fs::path>& listed, Report& report) {
    std::set<fs::path> unlisted;
    for (const auto& file : fs::recursive_directory_iterator(folder)) {
        const fs::path relative = file.path().lexically_relative(folder);
        if (!file.is_directory() && relative != "manifest.json" && !listed.contains(relative)) {
            unlisted.insert(relative);
        }
    }
    for (const fs::path& file : unlisted) {
        report.notes.push_back(
            {Utf8FromPath(file.generic_u8string()), "is not listed in manifest.json"});
    }
}

Report examine(const fs::path& folder, Terminal& terminal, bool json) {
    const ManifestText manifest = readManifest(folder);
    Report report;
    checkCount(manifest, false, manifest.count, report);
    checkCount(manifest, true, manifest.ambientCount, report);
    std::set<std::string> ids;
    std::set<fs::path> listed;
    for (const ManifestEntry& entry : manifest.entries) {
        ++report.effects;
        if (!json) {
            terminal.progress("checking " + std::to_string(report.effects) + " of " +
                              std::to_string(manifest.entries.size()) + ": " + entry.path);
        }
        if (!ids.insert(entry.id).second) {
            report.faults.push_back({entry.path, "the id '" + entry.id + "' is listed twice"});
        }
        if (!entry.id.ends_with(".sfx")) {
            report.notes.push_back({entry.path, "the id '" + entry.id + "' does not end in .sfx"});
        }
        const auto path = vemo::sfx::TryPathFromUtf8(entry.path);
        if (!path) {
            report.faults.push_back({entry.path, "is no path"});
        } else if (listed.insert(path->lexically_normal()).second) {
            checkEffect(folder, entry, path->lexically_normal(), report);
        }
    }
    noteUnlisted(folder, listed, report);
    if (report.faults.empty()) {
        // The library has the last word, on the manifest's version for one.
        Install::open(folder);
    }
    return report;
}

void writeFindings(JsonOut& json, const char* key, const std::vector<Finding>& findings) {
    json.Key(key);
    json.StartArray();
    for (const Finding& finding : findings) {
        json.StartObject();
        json.member("file", finding.file);
        json.member("text", finding.text);
        json.EndObject();
    }
    json.EndArray();
}

void printJson(const std::string& folder, const Report& report) {
    JsonOut json;
    json.StartObject();
    json.member("folder", folder);
    json.Key("effects");
    json.Uint64(report.effects);
    writeFindings(json, "faults", report.faults);
    writeFindings(json, "notes", report.notes);
    json.EndObject();
    std::cout << json.text();
}

void print(const std::string& folder, const Report& report, Terminal& terminal) {
    for (const Finding& fault : report.faults) {
        terminal.line("fault: " + fault.file + ": " + fault.text);
    }
    for (const Finding& note : report.notes) {
        terminal.line("note: " + note.file + " " + note.text);
    }
    terminal.line(folder + ": " + countText(report.effects, "effect") + ", " +
                  countText(report.faults.size(), "fault"));
}

ExitCode verify(const std::string& argument, bool json) {
    Terminal terminal;
    const fs::path path = locateInstall(argument);
    const std::string folder = pathText(path);
    const Report report = examine(path, terminal, json);
    if (json) {
        printJson(folder, report);
    } else {
        print(folder, report, terminal);
    }
    return report.faults.empty() ? ExitCode::Ok : ExitCode::Refused;
}

} // namespace

void addVerifyCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand("verify", DESCRIPTION);
    const auto folder = std::make_shared<std::string>();
    const auto json = std::make_shared<bool>(false);
    command->add_option("FOLDER", *folder, "The install folder, or the data root above it")
        ->required();
    command->add_flag("--json", *json, "Write the report as JSON");
    command->callback(
        [folder, json, &chosen] { chosen = [folder, json] { return verify(*folder, *json); }; });
}

} // namespace vemo::tool
