#pragma once

#include <optional>
#include <string>

#include <sfx/model/CustomAudioParameters.h>

#include "SoundOptions.h"

namespace vemo::tool {

/// The text of the URL that the library plays: that of a path, or the text itself if it is a URL.
/// Empty when there is no such file.
std::optional<std::string> userFileUrl(const std::string& pathOrUrl);

/// How to play a user's audio file. ToolError (Refused) that names it when there is no such file.
audio::CustomAudioParameters userFile(const std::string& pathOrUrl, SoundOptions options);

} // namespace vemo::tool
