#pragma once

#include <filesystem>

#include <sndfile.h>

#include "Pcm.h"

namespace sfx_test {

/// Writes a sound file of any format of libsndfile, for example SF_FORMAT_WAV | SF_FORMAT_PCM_16
/// or SF_FORMAT_FLAC | SF_FORMAT_PCM_24. Throws std::runtime_error naming the path.
void WriteSoundFile(const std::filesystem::path& path, const Pcm& pcm,
                    int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16);

} // namespace sfx_test
