#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace vemo::tool {

/// Interleaved signed 16-bit PCM in native byte order.
struct EffectAudio {
    std::vector<unsigned char> pcm;
    unsigned int channels = 0;
    unsigned int rate = 0;

    /// Playing time.
    double seconds() const;
};

/// The whole file; std::runtime_error with the reason when it cannot be read.
std::vector<unsigned char> readBytes(const std::filesystem::path& file);

/// True when the bytes start an Ogg stream whose first page carries Vorbis.
bool isOggVorbis(const std::vector<unsigned char>& bytes);

/// Decodes a plain Ogg Vorbis stream. std::runtime_error with the reason when it is empty, not
/// Vorbis, damaged, cut off, or holds no sound.
EffectAudio decodeVorbis(std::vector<unsigned char>& bytes);

/// Reads, deciphers and decodes an installed effect; fails like decodeVorbis() and readBytes().
EffectAudio decodeEffect(const std::filesystem::path& file);

} // namespace vemo::tool
