#pragma once

#include <string>

#include <sfx/export.h>
#include <sfx/manager/AudioDevice.h>

namespace vemo::audio {

/// A named route to one output device. A plain value: one path is used by one thread at a time.
class SFX_EXPORT AudioPath {
public:
    AudioPath(const std::string& name, const AudioDevice& device) : name_(name), device_(device) {}

    std::string Name() const { return name_; }
    /// Valid as long as the path lives.
    const AudioDevice& OutputAudioDevice() const { return device_; }
    void SetOutputAudioDevice(const AudioDevice& device) { device_ = device; }

private:
    std::string name_;
    AudioDevice device_;
};

} // namespace vemo::audio
