#pragma once

#include <vector>

#include <sfx/manager/AudioDevice.h>

namespace vemo::tool {

/// The output devices. ToolError (NoAudio) when there is none; leaves the process with that code
/// when the audio server takes the call and never answers.
std::vector<audio::AudioDevice> outputDevices();

} // namespace vemo::tool
