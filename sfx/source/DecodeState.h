#pragma once

#include <string>

#include <sfx/export.h>

namespace vemo::audio {

/// How far the decode of a file has come. Implemented beside SfxFileInterface by the files that
/// decode themselves, so that a playback can wait for its file and give up on a failed one.
class SFX_EXPORT DecodeState {
public:
    enum class Stage { Decoding, Ready, Failed };

    /// Any thread. Once it has answered Ready, every accessor of the file sees the decoded values.
    virtual Stage stage() const noexcept = 0;

    /// Why the decode failed, naming the file; empty unless stage() is Failed. Any thread.
    virtual std::string failure() const = 0;

protected:
    ~DecodeState() = default;
};

} // namespace vemo::audio
