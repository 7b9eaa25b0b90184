#pragma once

#include <vector>

#include <sfx/export.h>
#include <sfx/manager/DeviceControlInterface.h>

namespace vemo::audio {

/// Lists what QMediaDevices lists; texts are UTF-8. Ids are stored once per distinct id: the same
/// device has the same pointer in every list. Needs a QCoreApplication, no event loop.
class SFX_EXPORT DeviceControlQt : public DeviceControlInterface {
public:
    /// Any thread. Waits for the audio server if it takes the call and does not answer.
    std::vector<AudioDevice> GetOutputDevices() override;
};

} // namespace vemo::audio
