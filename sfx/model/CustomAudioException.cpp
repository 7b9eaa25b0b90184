#include <sfx/model/CustomAudioException.h>

namespace vemo::sfx {

CustomAudioException::CustomAudioException(const std::string& priority, const std::string& message)
    : priority_(priority), message_(message) {}

CustomAudioException::CustomAudioException(const CustomAudioException& other) = default;
CustomAudioException::CustomAudioException(CustomAudioException&& other) noexcept = default;
CustomAudioException& CustomAudioException::operator=(const CustomAudioException& other) = default;
CustomAudioException&
CustomAudioException::operator=(CustomAudioException&& other) noexcept = default;
CustomAudioException::~CustomAudioException() = default;

std::string CustomAudioException::Message() const {
    return message_;
}
std::string CustomAudioException::Priority() const {
    return priority_;
}
const char* CustomAudioException::what() const noexcept {
    return message_.c_str();
}

} // namespace vemo::sfx
