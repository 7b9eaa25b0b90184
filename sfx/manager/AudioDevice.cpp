#include "AudioDevice.h"

#include <utility>

namespace vemo::audio {

AudioDevice::AudioDevice() = default;

AudioDevice::AudioDevice(const wchar_t* endpointId, std::string friendlyName,
                         std::string endpointIdText)
    : id(endpointId), name(std::move(friendlyName)), idText(std::move(endpointIdText)) {}

AudioDevice::AudioDevice(const AudioDevice& other) = default;
AudioDevice::AudioDevice(AudioDevice&& other) noexcept = default;
AudioDevice& AudioDevice::operator=(const AudioDevice& other) = default;
AudioDevice& AudioDevice::operator=(AudioDevice&& other) noexcept = default;
AudioDevice::~AudioDevice() = default;

} // namespace vemo::audio
