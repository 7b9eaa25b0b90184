#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <vemo_core/export.h>

namespace vemo::core {

/// Bytes, ordered and compared byte by byte. A plain value.
class VEMO_CORE_EXPORT DataVector {
public:
    DataVector() = default;
    /// The bytes of the text, without an end mark.
    explicit DataVector(std::string_view text);

    std::size_t size() const { return bytes_.size(); }
    const unsigned char* data() const { return bytes_.data(); }
    std::string ToString() const;

    std::strong_ordering operator<=>(const DataVector& other) const;
    bool operator==(const DataVector&) const = default;

private:
    std::vector<unsigned char> bytes_;
};

} // namespace vemo::core
