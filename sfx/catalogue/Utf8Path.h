#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace vemo::sfx {

/// Paths are UTF-8 wherever the library keeps them as text; on Windows the narrow constructor of
/// std::filesystem::path would read them in the code page of the machine.
inline std::filesystem::path PathFromUtf8(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

/// Nothing for a text that is no path: on Windows, what is not UTF-8.
inline std::optional<std::filesystem::path> TryPathFromUtf8(const std::string& text) {
    try {
        return PathFromUtf8(text);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

inline std::string Utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace vemo::sfx
