#include "AudioPath.h"

namespace vemo::audio {

AudioPath::AudioPath(const std::string& name, const AudioDevice& device)
    : name_(name), device_(device) {}

AudioPath::AudioPath(const AudioPath& other) = default;
AudioPath::AudioPath(AudioPath&& other) noexcept = default;
AudioPath& AudioPath::operator=(const AudioPath& other) = default;
AudioPath& AudioPath::operator=(AudioPath&& other) noexcept = default;
AudioPath::~AudioPath() = default;

std::string AudioPath::Name() const {
    return name_;
}

const AudioDevice& AudioPath::OutputAudioDevice() const {
    return device_;
}

void AudioPath::SetOutputAudioDevice(const AudioDevice& device) {
    device_ = device;
}

} // namespace vemo::audio
