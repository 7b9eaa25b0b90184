#pragma once

#include <string>
#include <utility>

#include <sfx/export.h>

namespace vemo::audio {

/// The decoded PCM of one sound, in memory. The order of the virtual operations is part of the
/// interface. Every operation may be called from any thread; before the file is decoded they
/// answer empty values.
class SFX_EXPORT SfxFileInterface {
public:
    virtual ~SfxFileInterface() = default;
    /// First and one-past-last byte of the interleaved PCM. Valid as long as the file lives.
    virtual std::pair<const char*, const char*> Read() = 0;
    /// Seconds, as each kind of file defines it.
    virtual float Duration() const = 0;
    virtual unsigned int ChannelCount() const = 0;
    /// Frames per second.
    virtual double SampleRate() const = 0;
    /// The path the file was made from.
    virtual std::string Path() = 0;
};

} // namespace vemo::audio
