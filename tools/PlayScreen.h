#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "Terminal.h"
#include "Voice.h"

namespace vemo::tool {

/// "playing", what, how long and with which settings.
std::string startText(const Voice& voice);
/// What, how far it is, and how loud if that is known.
std::string statusText(Voice& voice);
/// "finished" or "stopped", what, and after how long.
std::string endText(const Voice& voice);

/// Shows what plays: on a terminal one line that moves, elsewhere a line every half second.
class PlayScreen {
public:
    void started(Voice& voice);
    /// Called often; draws as often as it makes sense.
    void playing(const std::vector<Voice*>& voices);
    void ended(Voice& voice);
    /// Takes the moving line off the terminal.
    void clear() { terminal_.progress(""); }

private:
    std::chrono::milliseconds interval_() const;

    Terminal terminal_;
    std::chrono::steady_clock::time_point lastLine_{};
};

} // namespace vemo::tool
