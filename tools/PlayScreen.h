#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "PlayVoice.h"
#include "Terminal.h"

namespace vemo::tool {

/// Shows what plays: on a terminal one line that moves, elsewhere a line every half second.
class PlayScreen {
public:
    void started(PlayVoice& voice);
    /// Called often; draws as often as it makes sense.
    void playing(const std::vector<PlayVoice*>& voices);
    void ended(PlayVoice& voice);
    /// Takes the moving line off the terminal.
    void clear() { terminal_.progress(""); }

private:
    std::chrono::milliseconds interval_() const;

    Terminal terminal_;
    std::chrono::steady_clock::time_point lastLine_{};
};

} // namespace vemo::tool
