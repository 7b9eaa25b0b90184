#include "AudioPathManager.h"

#include <stdexcept>

namespace vemo::audio {

AudioPathManager::AudioPathManager() = default;
AudioPathManager::AudioPathManager(const AudioPathManager& other) = default;
AudioPathManager::AudioPathManager(AudioPathManager&& other) noexcept = default;
AudioPathManager& AudioPathManager::operator=(const AudioPathManager& other) = default;
AudioPathManager& AudioPathManager::operator=(AudioPathManager&& other) noexcept = default;
AudioPathManager::~AudioPathManager() = default;

int AudioPathManager::AddPath(const AudioPath& path) {
    const std::int32_t id = nextId_++;
    paths_.emplace(id, path);
    return id;
}

const wchar_t* AudioPathManager::GetDeviceIdFromPathId(int id) const {
    const auto found = paths_.find(id);
    if (found == paths_.end()) {
        throw std::runtime_error("Path Id not found.");
    }
    return found->second.OutputAudioDevice().id;
}

} // namespace vemo::audio
