#include "DeviceControl.h"

#ifdef _WIN32
#include "DeviceControlWin32.h"
#else
#include "DeviceControlQt.h"
#endif

namespace vemo::audio {

std::unique_ptr<DeviceControlInterface> MakeDeviceControl() {
#ifdef _WIN32
    return std::make_unique<DeviceControlWin32>();
#else
    return std::make_unique<DeviceControlQt>();
#endif
}

} // namespace vemo::audio
