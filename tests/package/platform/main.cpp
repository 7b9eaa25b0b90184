#include <cstdlib>

#include <vemo_audio/OggVorbisDecoder.h>
#include <vemo_core/ChangeLog.h>
#include <vemo_core/FileVersion.h>

namespace {

bool RefusesAFolder() {
    try {
        CL::OpenShow(".");
    } catch (const CL::ShowFileError&) { // thrown in the library, caught in the host
        return true;
    }
    return false;
}

} // namespace

int main() {
    unsigned char none = 0;
    const vemo_audio::OggVorbisDecoder decoder(&none, 0);
    const bool works = cmn::FileVersion("1.2") < cmn::FileVersion(1, 3) &&
                       decoder.SampleRate() == 0 && RefusesAFolder();
    return works ? EXIT_SUCCESS : EXIT_FAILURE;
}
