#pragma once

#include <cstddef>
#include <string>

#include "TerminalDevice.h"

namespace vemo::tool {

/// Shows the progress of a command: on a terminal one line that is drawn over and over, elsewhere
/// nothing, so that logs hold whole lines only. Lasting lines go to stdout.
class Terminal {
public:
    Terminal();
    ~Terminal();

    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool interactive() const { return interactive_; }
    /// Draws the line that the next one replaces.
    void progress(const std::string& text);
    /// Writes a line that stays.
    void line(const std::string& text);

private:
    void wipe_();

    bool interactive_;
    bool drawn_ = false;
};

/// A line on stderr, headed with the program's name.
void complain(const std::string& text);

/// Columns that the text takes, which are neither its bytes nor, for some scripts, its characters.
std::size_t displayWidth(const std::string& text);
/// The text, filled up with spaces to that many columns.
std::string padded(const std::string& text, std::size_t width);

/// For example "1 effect", "2 effects".
std::string countText(std::size_t count, const std::string& noun);

/// The shortest form of the number, for example "0.5".
std::string numberText(double value);

/// For example "1.25 s".
std::string secondsText(double seconds);

} // namespace vemo::tool
