#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "EffectAudio.h"

namespace vemo::tool {

/// A source file turned into what the install holds, still plain.
struct PackedAudio {
    std::vector<unsigned char> vorbis;
    /// What the stream decodes to.
    double seconds = 0.0;
    /// False when the source was Ogg Vorbis and went in as it was.
    bool encoded = false;
};

/// Reads `file`: Ogg Vorbis, told by content, stays as it is; everything else that libsndfile
/// reads is encoded to Vorbis. `checkpoint` is called now and then and may throw to give up.
/// std::runtime_error with the reason when the file cannot be read, decoded or encoded.
PackedAudio packAudio(const std::filesystem::path& file, const std::function<void()>& checkpoint);

} // namespace vemo::tool
