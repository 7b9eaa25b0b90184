#pragma once

#include <memory>

#include <sfx/export.h>
#include <sfx/manager/DeviceControlInterface.h>

namespace vemo::audio {

/// The platform's own enumeration: DeviceControlWin32 on Windows, DeviceControlQt elsewhere. Any
/// thread.
SFX_EXPORT std::unique_ptr<DeviceControlInterface> MakeDeviceControl();

} // namespace vemo::audio
