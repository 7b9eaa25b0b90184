#pragma once

#include <cstdint>
#include <map>

#include <sfx/export.h>
#include <sfx/manager/AudioPath.h>

namespace vemo::audio {

/// Numbers output paths. Ids count up from 1000 and are never used again; a copy goes on counting
/// where the original stands. Names may repeat. A plain value: used by one thread at a time.
class SFX_EXPORT AudioPathManager {
public:
    AudioPathManager();
    AudioPathManager(const AudioPathManager& other);
    AudioPathManager(AudioPathManager&& other) noexcept;
    AudioPathManager& operator=(const AudioPathManager& other);
    AudioPathManager& operator=(AudioPathManager&& other) noexcept;
    ~AudioPathManager();

    /// Keeps a copy of the path; returns its id.
    int AddPath(const AudioPath& path);
    /// The id of the path's device: the very pointer that its AudioDevice held.
    /// Throws std::runtime_error ("Path Id not found.") for an id that AddPath has not given.
    const wchar_t* GetDeviceIdFromPathId(int id) const;

private:
    std::map<std::int32_t, AudioPath> paths_;
    std::int32_t nextId_ = 1000;
};

} // namespace vemo::audio
