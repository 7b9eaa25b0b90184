#pragma once

#include <QThread>

namespace vemo::audio {

/// The thread on which users' audio files are decoded. QAudioDecoder needs an event loop that
/// runs, and the controller's thread may be blocked (a host that waits there until a player is
/// done) or have none. Started by the first call, ended with the application. Any thread.
QThread& DecodeThread();

} // namespace vemo::audio
