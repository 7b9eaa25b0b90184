#pragma once

#include <cstddef>
#include <filesystem>
#include <system_error>

#include "PathText.h"
#include "System.h"
#include "ToolError.h"

namespace vemo::tool {

/// Throws ToolError (Refused) that says what failed, where and why.
[[noreturn]] inline void failAt(const std::string& what, const std::filesystem::path& path,
                                const std::error_code& error) {
    throw ToolError(ExitCode::Refused, what + " " + pathText(path) + ": " + reasonText(error));
}

/// Makes a folder that is called `prefix` and some characters more, as open to others as the user
/// has it, and returns its path.
std::filesystem::path makeFolder(const std::filesystem::path& prefix, std::error_code& error);

/// Makes a file and writes it through to the disk; failAt() when it cannot.
void writeNewFile(const std::filesystem::path& path, const unsigned char* bytes, std::size_t size);

/// Writes the names in the folder through to the disk; failAt() when it cannot.
void syncFolder(const std::filesystem::path& folder);

/// Renames a folder, to the name of no other or of an empty one; std::errc::directory_not_empty or
/// file_exists when there is another.
std::error_code moveFolder(const std::filesystem::path& from, const std::filesystem::path& to);

/// Gives each of the folders the other's name, in one step; false where that cannot be done.
bool exchangeFolders(const std::filesystem::path& one, const std::filesystem::path& other);

} // namespace vemo::tool
