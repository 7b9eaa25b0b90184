#pragma once

#include <cstddef>

namespace vemo::audio {

/// The one byte with which the install's effect files are enciphered.
inline constexpr unsigned char EffectKey = 0xA5;

/// Enciphers or deciphers in place; both are the same operation.
inline void ApplyEffectCipher(unsigned char* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] ^= EffectKey;
}

} // namespace vemo::audio
