#pragma once

#include <memory>
#include <span>

#include <QThreadPool>

#include <sfx/player/SfxPlayerImpl.h>
#include <sfx/source/EncryptedVorbisFile.h>

#include "Install.h"
#include "SoundOptions.h"
#include "Voice.h"

namespace vemo::tool {

/// An installed effect on a player of its own.
class PlayVoice : public Voice {
public:
    /// Starts decoding.
    PlayVoice(const InstalledEffect& effect, const SoundOptions& options,
              std::shared_ptr<QThreadPool> playbackPool);

    std::string label() const override { return effect_.id; }
    std::string title() const override { return effect_.id + " (" + effect_.name + ")"; }
    audio::sfx::SfxDto record() const override { return *player_.SfxData(); }
    bool ready() override;
    double seconds() const override;
    /// The PCM at the playing position through volume, pan and fades. The echo of the reverb is
    /// not in it.
    std::optional<double> level() override;

private:
    void start_() override;
    void halt_() override { player_.Stop(false); }
    bool done_() override { return player_.Done(); }
    std::span<const std::int16_t> pcm_();

    InstalledEffect effect_;
    audio::EncryptedVorbisFile file_;
    audio::SfxPlayerImpl player_;
};

} // namespace vemo::tool
