#pragma once

#include <QAudioFormat>
#include <QAudioSink>

namespace vemo::audio {

/// Before the sink starts. Qt's own choice on Windows is half a second, which it fills ahead and
/// tops up every quarter: a fade would be heard that late, and in as few steps. Elsewhere its
/// choice is as short as it can be.
inline void ChooseBufferSize([[maybe_unused]] QAudioSink& sink,
                             [[maybe_unused]] const QAudioFormat& format) {
#ifdef _WIN32
    sink.setBufferSize(format.bytesForDuration(100'000));
#endif
}

} // namespace vemo::audio
