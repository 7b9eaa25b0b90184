#pragma once

#include <compare>
#include <cstdint>
#include <string>

#include <vemo_core/export.h>

namespace cmn {

/// Version of a file format, compared by major number, then minor number. A plain value.
class VEMO_CORE_EXPORT FileVersion {
public:
    FileVersion() = default;
    FileVersion(std::uint8_t major, std::uint8_t minor);
    /// Reads "MAJOR" or "MAJOR.MINOR" in decimal, each 0 to 255; anything behind a second point
    /// is a patch level and takes no part. Throws std::invalid_argument that names the text.
    explicit FileVersion(const std::string& text);

    std::uint8_t Major() const;
    std::uint8_t Minor() const;

    auto operator<=>(const FileVersion&) const = default; // NOLINT(modernize-use-nullptr)

private:
    std::uint8_t major_ = 0;
    std::uint8_t minor_ = 0;
};

} // namespace cmn
