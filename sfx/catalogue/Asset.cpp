#include <sfx/catalogue/Asset.h>

#include <utility>

namespace vemo {

Asset::Asset() : descriptor_({}, {}, {}, {}, {}) {}
Asset::Asset(AssetDescriptor descriptor, std::string bytes)
    : descriptor_(std::move(descriptor)), bytes_(std::move(bytes)) {}
Asset::Asset(const Asset& other) = default;
Asset::Asset(Asset&& other) noexcept = default;
Asset& Asset::operator=(const Asset& other) = default;
Asset& Asset::operator=(Asset&& other) noexcept = default;
Asset::~Asset() = default;

const AssetDescriptor& Asset::Descriptor() const {
    return descriptor_;
}
const std::string& Asset::Bytes() const {
    return bytes_;
}

} // namespace vemo
