#include "DeviceControlWin32.h"

#include "DeviceControlWin32Impl.h"

namespace vemo::audio {

DeviceControlWin32::DeviceControlWin32() : impl_(std::make_unique<DeviceControlWin32Impl>()) {}

DeviceControlWin32::~DeviceControlWin32() = default;

std::vector<AudioDevice> DeviceControlWin32::GetOutputDevices() {
    return impl_->GetOutputDevices();
}

} // namespace vemo::audio
