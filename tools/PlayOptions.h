#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vemo::tool {

/// What `play` was asked for; every value is within its range.
struct PlayOptions {
    std::vector<std::string> effects;
    std::string install;
    float volume = 1.0F;
    float pan = 0.5F;
    float reverb = 0.0F;
    /// Milliseconds.
    unsigned short fadeIn = 0;
    unsigned short fadeOut = 500;
    /// -1 without end; unset: as the kind of effect has it.
    std::optional<int> repeats;
    /// Seconds from the start of an effect.
    std::optional<double> stopAfter;
    bool together = false;
};

} // namespace vemo::tool
