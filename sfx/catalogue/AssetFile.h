#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "JsonDocument.h"

namespace vemo::sfx {

/// The document in the file of that path in UTF-8, or nothing if the file cannot be read or holds
/// something else. A file larger than that is refused by name.
std::optional<rapidjson::Document> ParseJsonFile(const std::string& path, std::uintmax_t largestKiB,
                                                 JsonRefusal refuse);

/// All bytes of a regular file, or nothing if it cannot be read.
std::optional<std::string> ReadFile(const std::filesystem::path& path);

} // namespace vemo::sfx
