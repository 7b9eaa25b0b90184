#pragma once

#include <memory>
#include <vector>

#include <sfx/export.h>
#include <sfx/manager/DeviceControlInterface.h>

namespace vemo::audio {

class DeviceControlWin32Impl;

/// Lists the active render endpoints of Windows Core Audio; texts are in the thread's ANSI code
/// page. Each list holds ids of its own, which are never freed. On Windows only.
class SFX_EXPORT DeviceControlWin32 : public DeviceControlInterface {
public:
    DeviceControlWin32();
    ~DeviceControlWin32() override;
    DeviceControlWin32(const DeviceControlWin32&) = delete;
    DeviceControlWin32& operator=(const DeviceControlWin32&) = delete;

    /// Any thread that has initialised COM; on others the list is empty. Throws std::length_error
    /// for a name or id that no std::string can hold.
    std::vector<AudioDevice> GetOutputDevices() override;

private:
    std::unique_ptr<DeviceControlWin32Impl> impl_;
};

} // namespace vemo::audio
