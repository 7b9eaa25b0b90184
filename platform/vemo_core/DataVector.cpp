#include <vemo_core/DataVector.h>

namespace vemo::core {

DataVector::DataVector(std::string_view text) : bytes_(text.begin(), text.end()) {}

std::string DataVector::ToString() const {
    return {bytes_.begin(), bytes_.end()};
}

} // namespace vemo::core
