#pragma once

#include <filesystem>
#include <string>

#include <sfx/catalogue/Utf8Path.h>

namespace vemo::tool {

using vemo::sfx::PathFromUtf8;
using vemo::sfx::Utf8FromPath;

/// As the user reads it: UTF-8, with the separators of the system.
inline std::string pathText(std::filesystem::path path) {
    return Utf8FromPath(path.make_preferred());
}

} // namespace vemo::tool
