#pragma once

#include <string>

#include <sfx/export.h>
#include <sfx/manager/AudioDevice.h>

namespace vemo::audio {

/// A named route to one output device. A plain value: one path is used by one thread at a time.
class SFX_EXPORT AudioPath {
public:
    AudioPath(const std::string& name, const AudioDevice& device);
    AudioPath(const AudioPath& other);
    AudioPath(AudioPath&& other) noexcept;
    AudioPath& operator=(const AudioPath& other);
    AudioPath& operator=(AudioPath&& other) noexcept;
    ~AudioPath();

    std::string Name() const;
    /// Valid as long as the path lives.
    const AudioDevice& OutputAudioDevice() const;
    void SetOutputAudioDevice(const AudioDevice& device);

private:
    std::string name_;
    AudioDevice device_;
};

} // namespace vemo::audio
