#pragma once

#include <string>

#include <sfx/export.h>

namespace vemo::audio {

/// One audio output device, as DeviceControlInterface lists it; made as `{id, name, idText}`. A
/// plain value: one record is used by one thread at a time. Copies share the id's characters.
struct SFX_EXPORT AudioDevice {
    /// No device: no id and empty texts.
    AudioDevice();
    AudioDevice(const wchar_t* endpointId, std::string friendlyName, std::string endpointIdText);
    AudioDevice(const AudioDevice& other);
    AudioDevice(AudioDevice&& other) noexcept;
    AudioDevice& operator=(const AudioDevice& other);
    AudioDevice& operator=(AudioDevice&& other) noexcept;
    ~AudioDevice();

    /// The platform's endpoint id, as SfxPlayerInterface::SetOutputDevice takes it. Neither copied
    /// nor freed; the ids that an enumeration gives stay valid for the life of the process.
    const wchar_t* id = nullptr;
    /// The friendly name: in the thread's ANSI code page on Windows, in UTF-8 elsewhere.
    std::string name;
    /// `id` as narrow text, encoded as `name` is.
    std::string idText;
};

} // namespace vemo::audio
