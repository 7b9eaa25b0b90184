#include "SoundOptions.h"

namespace vemo::tool {

namespace {

constexpr float UNITY = 1.0F;
constexpr float CENTRE = 0.5F;
constexpr unsigned short FADE_OUT_MS = 500;
constexpr double MOST_REPEATS = 1e6;

template <typename T>
void fill(std::optional<T>& value, T usual) {
    value = value.value_or(usual);
}

} // namespace

void SoundOptions::complete() {
    fill(volume, UNITY);
    fill(pan, CENTRE);
    fill(reverb, 0.0F);
    fill<unsigned short>(fadeIn, 0);
    fill(fadeOut, FADE_OUT_MS);
}

bool SoundOptions::lengthenFadeIn() {
    const bool silent = fadeIn.value_or(0) > 0 && *fadeIn < FADE_STEP_MS;
    if (silent) {
        fadeIn = FADE_STEP_MS;
    }
    return silent;
}

void SoundOptions::applyTo(audio::sfx::SfxDto& record) const {
    record.setVolume(volume.value_or(record.volume()));
    record.setPan(pan.value_or(record.pan()));
    record.setReverb(reverb.value_or(record.reverb()));
    record.setFadeIn(fadeIn.value_or(record.fadeIn()));
    record.setFadeOut(fadeOut.value_or(record.fadeOut()));
    record.setRepeats(repeats.value_or(record.repeats()));
}

std::vector<CLI::Option*> addSoundOptions(CLI::App& command, SoundOptions& options,
                                          Defaults defaults) {
    std::vector<CLI::Option*> added;
    const auto add = [&](const char* name, auto& value, const char* description,
                         const CLI::Validator& range, const char* usual) {
        added.push_back(command.add_option(name, value, description)->check(range));
        if (defaults == Defaults::Shown) {
            added.back()->default_str(usual);
        }
    };
    const CLI::Validator fade = within(0, LONGEST_FADE_MS);
    add("--volume", options.volume, "Linear gain, 1 is unity", within(0, 1), "1");
    add("--pan", options.pan, "0 left, 0.5 centre, 1 right", within(0, 1), "0.5");
    add("--reverb", options.reverb, "Gain of the echo, 0 is none", within(0, 1), "0");
    add("--fade-in", options.fadeIn, "Milliseconds", fade, "0");
    add("--fade-out", options.fadeOut, "Milliseconds, for a stop", fade, "500");
    add("--repeats", options.repeats, "Passes after the first; -1 repeats without end",
        within(-1, MOST_REPEATS), "");
    return added;
}

CLI::Validator within(double least, double most) {
    const auto text = [](double value) { return CLI::detail::to_string(value); };
    const std::string range = text(least) + " to " + text(most);
    return CLI::Validator(
        [=](std::string& input) {
            double value = 0.0;
            const bool fits =
                CLI::detail::lexical_cast(input, value) && value >= least && value <= most;
            return fits ? std::string() : "'" + input + "' is not a number from " + range;
        },
        range);
}

} // namespace vemo::tool
