#include "PlayVoice.h"

#include <algorithm>
#include <cmath>

#include <sfx/source/SfxAudioFilterInterface.h>

#include "PcmLevel.h"

namespace vemo::tool {

namespace {

constexpr double LEVEL_WINDOW_SECONDS = 0.1;

audio::sfx::SfxDto makeRecord(const InstalledEffect& effect, const SoundOptions& options) {
    audio::sfx::SfxDto record = audio::sfx::SfxDto::SfxDtoBuilder()
                                    .name(effect.name)
                                    .effectId(effect.id)
                                    .effectPath(effect.path)
                                    .eventId("sfx." + effect.id)
                                    .type(effect.ambient ? audio::AMBIENT : audio::PRIMARY)
                                    .build();
    options.applyTo(record);
    return record;
}

} // namespace

PlayVoice::PlayVoice(const InstalledEffect& effect, const SoundOptions& options,
                     std::shared_ptr<QThreadPool> playbackPool)
    : effect_(effect),
      file_(effect.path),
      player_(makeRecord(effect, options), std::move(playbackPool), std::make_shared<QThreadPool>(),
              nullptr) {}

bool PlayVoice::ready() {
    using Stage = audio::DecodeState::Stage;
    if (file_.stage() == Stage::Failed) {
        throw ToolError(ExitCode::Refused, file_.failure());
    }
    return file_.stage() == Stage::Ready;
}

void PlayVoice::start_() {
    player_.SetFile(&file_);
    player_.Play();
}

std::span<const std::int16_t> PlayVoice::pcm_() {
    const auto [begin, end] = file_.Read();
    return {reinterpret_cast<const std::int16_t*>(begin),
            static_cast<std::size_t>(end - begin) / sizeof(std::int16_t)};
}

double PlayVoice::seconds() const {
    // Which is twice the playing time.
    return file_.Duration() / 2.0;
}

std::optional<double> PlayVoice::level() {
    const std::span<const std::int16_t> pcm = pcm_();
    const unsigned int channels = file_.ChannelCount();
    if (pcm.empty() || channels == 0 || (allSeconds() && elapsed() > *allSeconds())) {
        return 0.0;
    }
    const auto frames = pcm.size() / channels;
    const auto at = static_cast<std::size_t>(std::fmod(elapsed(), seconds()) * file_.SampleRate());
    const auto window = static_cast<std::size_t>(LEVEL_WINDOW_SECONDS * file_.SampleRate());
    const std::size_t from = std::min(at, frames - 1);
    const auto piece = pcm.subspan(from * channels, std::min(window, frames - from) * channels);
    const audio::sfx::SfxDto how = record();
    const double pan = how.pan();
    const bool panned = std::abs(pan - 0.5) > audio::SfxAudioFilterInterface::EPSILON;
    double loudest = 0.0;
    for (unsigned int channel = 0; channel < channels; ++channel) {
        const double gain = panned ? (channel == 0 ? 1.0 - pan : pan) : 1.0;
        loudest = std::max(loudest, gain * levelOf(piece, channels, channel).rms);
    }
    return loudest * how.volume() * fadeGain();
}

} // namespace vemo::tool
