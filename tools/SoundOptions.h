#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <sfx/model/SfxDto.h>

namespace vemo::tool {

/// How a sound is asked to be played, as far as it was said; every value is within its range.
struct SoundOptions {
    std::optional<float> volume;
    std::optional<float> pan;
    std::optional<float> reverb;
    /// Milliseconds.
    std::optional<unsigned short> fadeIn;
    std::optional<unsigned short> fadeOut;
    /// -1 without end.
    std::optional<int> repeats;

    /// Gives what was left open its default; the repeats stay as they are.
    void complete();
    /// Makes a fade-in that would stay silent one that is heard; true if it had to.
    bool lengthenFadeIn();
    /// Gives the record what is set.
    void applyTo(audio::sfx::SfxDto& record) const;
};

/// What to tell the user when lengthenFadeIn() answers true.
inline constexpr char FADE_IN_NOTE[] =
    "a fade-in below 30 ms has no step and would stay silent; it is made 30 ms";
inline constexpr double LONGEST_FADE_MS = 65535;
/// The library's fades go in steps of that length.
inline constexpr unsigned short FADE_STEP_MS = 30;

enum class Defaults { Shown, Hidden };
/// --volume, --pan, --reverb, --fade-in, --fade-out and --repeats.
std::vector<CLI::Option*> addSoundOptions(CLI::App& command, SoundOptions& options,
                                          Defaults defaults);

/// Refuses what is not a number from `least` to `most`; unlike CLI::Range it refuses "nan" too.
CLI::Validator within(double least, double most);

} // namespace vemo::tool
