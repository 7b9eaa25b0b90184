#include <cstdlib>

#include <vemo_audio/OggVorbisDecoder.h>
#include <vemo_core/FileVersion.h>

int main() {
    unsigned char none = 0;
    const vemo_audio::OggVorbisDecoder decoder(&none, 0);
    const bool works =
        cmn::FileVersion("1.2") < cmn::FileVersion(1, 3) && decoder.SampleRate() == 0;
    return works ? EXIT_SUCCESS : EXIT_FAILURE;
}
