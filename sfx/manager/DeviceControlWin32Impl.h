#pragma once

#include <vector>

#include <sfx/manager/AudioDevice.h>

struct IMMDeviceEnumerator;

namespace vemo::audio {

/// What DeviceControlWin32 forwards to. Keeps nothing between calls.
class DeviceControlWin32Impl {
public:
    virtual ~DeviceControlWin32Impl() = default;
    virtual std::vector<AudioDevice> GetOutputDevices();
};

/// The active render endpoints that `enumerator` gives, in its order. Whatever cannot be read is
/// left out: a device whose name is no text, for example. Every interface that is obtained on the
/// way is released; the enumerator stays the caller's.
std::vector<AudioDevice> ListRenderEndpoints(IMMDeviceEnumerator& enumerator);

} // namespace vemo::audio
