#include <sfx/model/BadFileException.h>

namespace vemo {

BadFileException::BadFileException(const std::string& message) : message_(message) {}
BadFileException::BadFileException(const BadFileException& other) = default;
BadFileException& BadFileException::operator=(const BadFileException& other) = default;
BadFileException::~BadFileException() = default;

const char* BadFileException::what() const noexcept {
    return message_.c_str();
}

} // namespace vemo
