#pragma once

#include <exception>

#include <sfx/export.h>

namespace vemo::audio {

/// An effect file or an output device cannot be used.
struct SFX_EXPORT SfxException : std::exception {
    /// `message` is neither copied nor owned: it outlives every copy of the exception.
    explicit SfxException(const char* message) noexcept;
    /// Copies the pointer, not the text.
    SfxException(const SfxException& other) noexcept;
    SfxException& operator=(const SfxException& other) noexcept;
    ~SfxException() override;

    /// The very pointer the exception was made with.
    const char* what() const noexcept override;

private:
    const char* message_;
};

} // namespace vemo::audio
