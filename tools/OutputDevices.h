#pragma once

#include <QAudioDevice>
#include <QList>

namespace vemo::tool {

/// The output devices. ToolError (NoAudio) when there is none; leaves the process with that code
/// when the audio server takes the call and never answers.
QList<QAudioDevice> outputDevices();

} // namespace vemo::tool
