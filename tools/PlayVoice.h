#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include <QThreadPool>

#include <sfx/player/SfxPlayerImpl.h>
#include <sfx/source/EncryptedVorbisFile.h>

#include "Install.h"
#include "PlayOptions.h"

namespace vemo::tool {

/// One effect on its way through the library: decoding, playing, over.
class PlayVoice {
public:
    /// Starts decoding.
    PlayVoice(const InstalledEffect& effect, const PlayOptions& options,
              std::shared_ptr<QThreadPool> playbackPool);

    const InstalledEffect& effect() const { return effect_; }
    const audio::sfx::SfxDto& record() const { return *player_.SfxData(); }
    audio::DecodeState::Stage stage() const { return file_.stage(); }
    /// Why the decode failed, naming the file.
    std::string failure() const { return file_.failure(); }

    void play();
    /// Fades out and ends; does nothing when called again.
    void stop();
    bool started() const { return startedAt_.has_value(); }
    bool stopped() const { return stoppedAt_.has_value(); }
    /// True once it has played to its end or to its stop.
    bool over();

    /// Playing time of one pass.
    double seconds();
    /// Playing time of all passes; empty when it repeats without end.
    std::optional<double> allSeconds();
    /// Seconds since play(); stands still once over() has answered true.
    double elapsed() const;
    /// About how loud it is now, 0 to 1: the PCM at the playing position through volume, pan and
    /// fades. The echo of the reverb is not in it.
    double level();

private:
    using Clock = std::chrono::steady_clock;

    std::span<const std::int16_t> pcm_();
    double fadeGain_() const;

    InstalledEffect effect_;
    audio::EncryptedVorbisFile file_;
    audio::SfxPlayerImpl player_;
    std::optional<Clock::time_point> startedAt_;
    std::optional<Clock::time_point> stoppedAt_;
    std::optional<Clock::time_point> endedAt_;
};

} // namespace vemo::tool
