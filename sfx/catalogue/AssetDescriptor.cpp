#include <sfx/catalogue/AssetDescriptor.h>

namespace vemo {

AssetDescriptor::AssetDescriptor(const std::string& type, const std::string& id,
                                 const std::string& group, const std::string& name,
                                 const std::string& filename)
    : type_(type), id_(id), group_(group), name_(name), sourceFilename_(filename) {}
AssetDescriptor::AssetDescriptor(const AssetDescriptor& other) = default;
AssetDescriptor::AssetDescriptor(AssetDescriptor&& other) noexcept = default;
AssetDescriptor& AssetDescriptor::operator=(const AssetDescriptor& other) = default;
AssetDescriptor& AssetDescriptor::operator=(AssetDescriptor&& other) noexcept = default;
AssetDescriptor::~AssetDescriptor() = default;

std::string AssetDescriptor::Type() const {
    return type_;
}
std::string AssetDescriptor::Id() const {
    return id_;
}
std::string AssetDescriptor::Group() const {
    return group_;
}
std::string AssetDescriptor::Name() const {
    return name_;
}
std::string AssetDescriptor::SourceFilename() const {
    return sourceFilename_;
}

} // namespace vemo
