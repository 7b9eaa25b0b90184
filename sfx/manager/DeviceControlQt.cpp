#include "DeviceControlQt.h"

#include <sfx/model/InternedText.h>
#include <sfx/player/AudioOutputs.h>

namespace vemo::audio {

std::vector<AudioDevice> DeviceControlQt::GetOutputDevices() {
    std::vector<AudioDevice> devices;
    for (const QAudioDevice& device : AudioOutputs()) {
        const QByteArray id = device.id();
        devices.push_back({InternText(QString::fromUtf8(id).toStdWString()),
                           device.description().toStdString(), id.toStdString()});
    }
    return devices;
}

} // namespace vemo::audio
