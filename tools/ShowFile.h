#pragma once

#include <list>
#include <string>
#include <vector>

#include <sfx/catalogue/ChangeLogSfxRepository.h>

#include "EventOptions.h"

namespace vemo::tool {

/// A show file: the process's change log while this lives. ToolError (Refused) out of every edit
/// that cannot be written.
class ShowFile {
public:
    enum class Missing { Refused, Created };
    /// ToolError (Refused) that names the file when it cannot be used, for example since another
    /// program holds it.
    ShowFile(const std::string& path, Missing missing);
    ~ShowFile();
    ShowFile(const ShowFile&) = delete;
    ShowFile& operator=(const ShowFile&) = delete;

    const std::string& path() const { return path_; }
    std::list<audio::sfx::SfxDto> events() { return repository_.Get(); }
    /// The events with that id or name; none is fine.
    std::vector<audio::sfx::SfxDto> named(const std::string& text);
    /// The one event with that id or name; ToolError (UnknownEffect) unless it is one.
    audio::sfx::SfxDto require(const std::string& text);

    /// Adds an event that completeNewEvent() has completed; returns its id.
    std::string add(const EventOptions& options);
    /// Changes what is said.
    void edit(const audio::sfx::SfxDto& event, const EventOptions& options);
    /// Removes the events with these ids or names and returns their ids; all or, if one is unknown,
    /// none.
    std::vector<std::string> remove(const std::vector<std::string>& texts);

private:
    std::string path_;
    audio::ChangeLogSfxRepository repository_;
};

} // namespace vemo::tool
