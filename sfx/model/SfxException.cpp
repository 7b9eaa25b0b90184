#include <sfx/model/SfxException.h>

namespace vemo::audio {

SfxException::SfxException(const char* message) noexcept : message_(message) {}
SfxException::SfxException(const SfxException& other) noexcept = default;
SfxException& SfxException::operator=(const SfxException& other) noexcept = default;
SfxException::~SfxException() = default;

const char* SfxException::what() const noexcept {
    return message_;
}

} // namespace vemo::audio
