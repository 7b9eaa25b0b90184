#include <vemo_core/FileVersion.h>

#include <charconv>
#include <stdexcept>
#include <string_view>

namespace cmn {

namespace {

// Reads one number and drops it from the front of `rest`.
bool TakeNumber(std::string_view& rest, std::uint8_t& number) {
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return error == std::errc();
}

bool TakePoint(std::string_view& rest) {
    const bool found = rest.starts_with('.');
    rest.remove_prefix(found ? 1 : 0);
    return found;
}

} // namespace

FileVersion::FileVersion(std::uint8_t major, std::uint8_t minor) : major_(major), minor_(minor) {}

FileVersion::FileVersion(const std::string& text) {
    std::string_view rest = text;
    bool good = TakeNumber(rest, major_);
    if (good && TakePoint(rest)) {
        good = TakeNumber(rest, minor_);
    }
    if (!good || (!rest.empty() && !rest.starts_with('.'))) {
        throw std::invalid_argument("Not a file version: " + text);
    }
}

std::uint8_t FileVersion::Major() const {
    return major_;
}
std::uint8_t FileVersion::Minor() const {
    return minor_;
}

} // namespace cmn
