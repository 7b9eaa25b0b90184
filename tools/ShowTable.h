#pragma once

#include <list>
#include <string>
#include <vector>

#include <sfx/model/SfxDto.h>

namespace vemo::tool {

/// The events of a show in columns, with a heading.
std::vector<std::string> showTable(const std::list<audio::sfx::SfxDto>& events);
/// The same as JSON.
std::string showJson(const std::list<audio::sfx::SfxDto>& events);

} // namespace vemo::tool
