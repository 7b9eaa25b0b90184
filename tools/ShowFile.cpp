#include "ShowFile.h"

#include <algorithm>
#include <any>
#include <filesystem>
#include <system_error>

#include "PathText.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

template <typename Work>
auto refusing(const Work& work) {
    try {
        return work();
    } catch (const CL::ShowFileError& error) {
        throw ToolError(ExitCode::Refused, error.what());
    }
}

void apply(const EventOptions& options, audio::sfx::SfxDto& record) {
    record.setEffectId(options.effect.value_or(record.effectId()));
    record.setName(options.name.value_or(record.name()));
    options.sound.applyTo(record);
}

} // namespace

ShowFile::ShowFile(const std::string& path, Missing missing) : path_(path) {
    std::error_code error;
    if (missing == Missing::Refused && !std::filesystem::exists(PathFromUtf8(path), error)) {
        throw ToolError(ExitCode::Refused, "no show file " + path);
    }
    refusing([&] { CL::OpenShow(path); });
}

ShowFile::~ShowFile() {
    CL::CloseShow();
}

std::vector<audio::sfx::SfxDto> ShowFile::named(const std::string& text) {
    std::vector<audio::sfx::SfxDto> found;
    for (const audio::sfx::SfxDto& event : events()) {
        if (event.eventId() == text || event.name() == text) {
            found.push_back(event);
        }
    }
    return found;
}

audio::sfx::SfxDto ShowFile::require(const std::string& text) {
    const auto found = named(text);
    if (found.empty()) {
        throw ToolError(ExitCode::UnknownEffect, "no event '" + text + "' in " + path_);
    }
    if (found.size() > 1) {
        std::string ids;
        for (const audio::sfx::SfxDto& event : found) {
            ids += (ids.empty() ? "" : ", ") + event.eventId();
        }
        throw ToolError(ExitCode::UnknownEffect,
                        "'" + text + "' is more than one event: " + ids + "; say which");
    }
    return found.front();
}

std::string ShowFile::add(const EventOptions& options) {
    return refusing([&] {
        audio::sfx::SfxDto record =
            audio::sfx::SfxDto::builder().eventId(repository_.GenerateEventId()).build();
        apply(options, record);
        repository_.Save(record);
        return record.eventId();
    });
}

void ShowFile::edit(const audio::sfx::SfxDto& event, const EventOptions& options) {
    refusing([&] {
        audio::sfx::SfxDto record = event;
        apply(options, record);
        repository_.Update(event.eventId(), record);
    });
}

std::vector<std::string> ShowFile::remove(const std::vector<std::string>& texts) {
    std::vector<std::string> ids;
    for (const std::string& text : texts) {
        const std::string id = require(text).eventId();
        if (std::find(ids.begin(), ids.end(), id) == ids.end()) {
            ids.push_back(id);
        }
    }
    refusing([&] {
        for (const std::string& id : ids) {
            repository_.Delete(id);
        }
    });
    return ids;
}

} // namespace vemo::tool
