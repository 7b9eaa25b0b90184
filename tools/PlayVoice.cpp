#include "PlayVoice.h"

#include <algorithm>
#include <cmath>

#include <sfx/source/SfxAudioFilterInterface.h>

#include "PcmLevel.h"

namespace vemo::tool {

namespace {

constexpr double LEVEL_WINDOW_SECONDS = 0.1;
// Where the library's fades start from and end at.
constexpr double FADE_FLOOR = 0.0001;

audio::sfx::SfxDto makeRecord(const InstalledEffect& effect, const PlayOptions& options) {
    audio::sfx::SfxDto record = audio::sfx::SfxDto::SfxDtoBuilder()
                                    .name(effect.name)
                                    .effectId(effect.id)
                                    .effectPath(effect.path)
                                    .eventId("sfx." + effect.id)
                                    .type(effect.ambient ? audio::AMBIENT : audio::PRIMARY)
                                    .fadeIn(options.fadeIn)
                                    .fadeOut(options.fadeOut)
                                    .volume(options.volume)
                                    .reverb(options.reverb)
                                    .pan(options.pan)
                                    .build();
    if (options.repeats) {
        record.setRepeats(*options.repeats);
    }
    return record;
}

double secondsBetween(std::chrono::steady_clock::time_point from,
                      std::chrono::steady_clock::time_point to) {
    return std::chrono::duration<double>(to - from).count();
}

} // namespace

PlayVoice::PlayVoice(const InstalledEffect& effect, const PlayOptions& options,
                     std::shared_ptr<QThreadPool> playbackPool)
    : effect_(effect),
      file_(effect.path),
      player_(makeRecord(effect, options), std::move(playbackPool), std::make_shared<QThreadPool>(),
              nullptr) {}

void PlayVoice::play() {
    player_.SetFile(&file_);
    startedAt_ = Clock::now();
    player_.Play();
}

void PlayVoice::stop() {
    if (started() && !stopped() && !over()) {
        stoppedAt_ = Clock::now();
        player_.Stop(false);
    }
}

bool PlayVoice::over() {
    if (!started() || !player_.Done()) {
        return false;
    }
    if (!endedAt_) {
        endedAt_ = Clock::now();
    }
    return true;
}

std::span<const std::int16_t> PlayVoice::pcm_() {
    const auto [begin, end] = file_.Read();
    return {reinterpret_cast<const std::int16_t*>(begin),
            static_cast<std::size_t>(end - begin) / sizeof(std::int16_t)};
}

double PlayVoice::seconds() {
    // Not Duration(), which answers twice the playing time.
    const double samplesPerSecond = file_.ChannelCount() * file_.SampleRate();
    return samplesPerSecond > 0.0 ? static_cast<double>(pcm_().size()) / samplesPerSecond : 0.0;
}

std::optional<double> PlayVoice::allSeconds() {
    const int repeats = record().repeats();
    return repeats < 0 ? std::nullopt : std::optional(seconds() * (repeats + 1.0));
}

double PlayVoice::elapsed() const {
    return started() ? secondsBetween(*startedAt_, endedAt_.value_or(Clock::now())) : 0.0;
}

double PlayVoice::fadeGain_() const {
    const double volume = std::max<double>(record().volume(), FADE_FLOOR);
    if (stopped() && record().fadeOut() > 0) {
        const double part = secondsBetween(*stoppedAt_, Clock::now()) * 1000.0 / record().fadeOut();
        return std::pow(FADE_FLOOR / volume, std::min(part, 1.0));
    }
    // As the library has it: a fade-in that is not shorter than Duration() is left out.
    if (record().fadeIn() > 0 &&
        file_.Duration() * 1000.0F > static_cast<float>(record().fadeIn())) {
        const double part = elapsed() * 1000.0 / record().fadeIn();
        return std::pow(FADE_FLOOR / volume, 1.0 - std::min(part, 1.0));
    }
    return 1.0;
}

double PlayVoice::level() {
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
    const double pan = record().pan();
    const bool panned = std::abs(pan - 0.5) > audio::SfxAudioFilterInterface::EPSILON;
    double loudest = 0.0;
    for (unsigned int channel = 0; channel < channels; ++channel) {
        const double gain = panned ? (channel == 0 ? 1.0 - pan : pan) : 1.0;
        loudest = std::max(loudest, gain * levelOf(piece, channels, channel).rms);
    }
    return loudest * record().volume() * fadeGain_();
}

} // namespace vemo::tool
