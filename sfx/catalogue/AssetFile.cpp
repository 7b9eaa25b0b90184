#include "AssetFile.h"

#include <exception>
#include <fstream>
#include <system_error>

#include "Utf8Path.h"

namespace vemo::sfx {

namespace {

// Opening anything else may wait for ever, and reading it never end.
bool IsRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace

std::optional<rapidjson::Document> ParseJsonFile(const std::string& path, std::uintmax_t largestKiB,
                                                 JsonRefusal refuse) {
    const std::optional<std::filesystem::path> native = TryPathFromUtf8(path);
    if (!native || !IsRegularFile(*native)) {
        return std::nullopt;
    }
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(*native, error);
    if (!error && size > largestKiB << 10U) {
        refuse(path + " is larger than " + std::to_string(largestKiB) + " KiB");
    }
    std::ifstream file(*native, std::ios::binary);
    return ParseJson(file);
}

std::optional<std::string> ReadFile(const std::filesystem::path& path) {
    if (!IsRegularFile(path)) {
        return std::nullopt;
    }
    try {
        std::ifstream file(path, std::ios::binary);
        std::string bytes(std::filesystem::file_size(path), '\0');
        if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
            return std::nullopt;
        }
        return bytes;
    } catch (const std::exception&) {
        // Too large for the memory, or gone in the meantime.
        return std::nullopt;
    }
}

} // namespace vemo::sfx
