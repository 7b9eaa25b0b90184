#pragma once

#include <exception>
#include <string>

#include <sfx/export.h>

namespace vemo::sfx {

/// A custom-audio command failed. Carries what the host shows to its user.
class SFX_EXPORT CustomAudioException : public std::exception {
public:
    /// `priority` is a severity word such as "warning" or "error"; it comes first.
    CustomAudioException(const std::string& priority, const std::string& message);
    CustomAudioException(const CustomAudioException& other);
    CustomAudioException(CustomAudioException&& other) noexcept;
    CustomAudioException& operator=(const CustomAudioException& other);
    CustomAudioException& operator=(CustomAudioException&& other) noexcept;
    ~CustomAudioException() override;

    std::string Message() const;
    std::string Priority() const;
    /// The same text as Message().
    const char* what() const noexcept override;

private:
    std::string priority_;
    std::string message_;
};

} // namespace vemo::sfx
