#include "SoundFile.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#define ENABLE_SNDFILE_WINDOWS_PROTOTYPES 1 // opens a path of wide characters
#endif
#include <sndfile.hh>

#include <sfx/catalogue/Utf8Path.h>

namespace sfx_test {

using vemo::sfx::Utf8FromPath;

void WriteSoundFile(const std::filesystem::path& path, const Pcm& pcm, int format) {
    SndfileHandle file(path.c_str(), SFM_WRITE, format, pcm.channels, pcm.rate);
    const auto frames = static_cast<sf_count_t>(pcm.Frames());
    if (file.error() != SF_ERR_NO_ERROR || file.writef(pcm.samples.data(), frames) != frames) {
        throw std::runtime_error("cannot write " + Utf8FromPath(path) + ": " + file.strError());
    }
}

} // namespace sfx_test
