#pragma once

#include <chrono>
#include <cstdint>

#include <QString>

#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

/// Tells when a file can be played: a playback must not open a stream on a file that has not
/// reported its format. Used on one thread.
class FileGate {
public:
    enum class State { Waiting, Open, Unusable };

    /// `file` may be null, which is unusable.
    explicit FileGate(SfxFileInterface* file);

    State Look();
    /// Why the file is unusable.
    QString Reason() const;
    std::chrono::steady_clock::duration Waited() const;

private:
    bool Stuck();

    SfxFileInterface* file_;
    std::chrono::steady_clock::time_point since_;
    std::chrono::steady_clock::time_point progressAt_;
    std::uint64_t decodedBytes_ = 0;
    bool stuck_ = false;
};

} // namespace vemo::audio
