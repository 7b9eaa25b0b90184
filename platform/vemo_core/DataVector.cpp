#include <vemo_core/DataVector.h>

namespace vemo::core {

DataVector::DataVector(std::string_view text) : bytes_(text.begin(), text.end()) {}

std::string DataVector::ToString() const {
    return {bytes_.begin(), bytes_.end()};
}

// Through string_view, which orders bytes as unsigned too: gcc 12 warns of an overread wherever it
// inlines the vector's own comparison.
std::strong_ordering DataVector::operator<=>(const DataVector& other) const {
    const auto text = [](const std::vector<unsigned char>& bytes) {
        return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    };
    return text(bytes_) <=> text(other.bytes_);
}

} // namespace vemo::core
