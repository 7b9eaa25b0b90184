#pragma once

#include <exception>
#include <string>

#include <sfx/export.h>

namespace vemo {

/// The asset description file is unusable.
struct SFX_EXPORT BadFileException : std::exception {
    explicit BadFileException(const std::string& message);
    BadFileException(const BadFileException& other);
    BadFileException& operator=(const BadFileException& other);
    ~BadFileException() override;

    const char* what() const noexcept override;

private:
    std::string message_;
};

} // namespace vemo
