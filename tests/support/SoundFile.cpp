#include "SoundFile.h"

#include <sndfile.hh>
#include <stdexcept>

namespace sfx_test {

void WriteSoundFile(const std::filesystem::path& path, const Pcm& pcm, int format) {
    SndfileHandle file(path.string(), SFM_WRITE, format, pcm.channels, pcm.rate);
    const auto frames = static_cast<sf_count_t>(pcm.Frames());
    if (file.error() != SF_ERR_NO_ERROR || file.writef(pcm.samples.data(), frames) != frames) {
        throw std::runtime_error("cannot write " + path.string() + ": " + file.strError());
    }
}

} // namespace sfx_test
