#pragma once

#include <vector>

#include <sfx/export.h>
#include <sfx/manager/AudioDevice.h>

namespace vemo::audio {

/// Lists the machine's audio outputs. The order of the virtual operations is part of the interface.
class SFX_EXPORT DeviceControlInterface {
public:
    virtual ~DeviceControlInterface() = default;
    /// The active output devices in the platform's order, as they are now; empty when there is none
    /// or the platform does not answer. A device that cannot be read is left out. Any thread; each
    /// implementation says what it asks of that thread.
    virtual std::vector<AudioDevice> GetOutputDevices() = 0;
};

} // namespace vemo::audio
