#include "Terminal.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace vemo::tool {

namespace {

std::size_t terminalWidth() {
    winsize size{};
    const bool known = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

} // namespace

Terminal::Terminal() : interactive_(::isatty(STDOUT_FILENO) == 1) {}

Terminal::~Terminal() {
    wipe_();
}

void Terminal::progress(const std::string& text) {
    if (interactive_) {
        wipe_();
        std::cout << text.substr(0, terminalWidth() - 1) << std::flush;
        drawn_ = true;
    }
}

void Terminal::line(const std::string& text) {
    wipe_();
    std::cout << text << '\n' << std::flush;
}

void Terminal::wipe_() {
    if (drawn_) {
        std::cout << "\r\x1b[K" << std::flush;
        drawn_ = false;
    }
}

void complain(const std::string& text) {
    std::cout << std::flush;
    std::cerr << "vemo-sfx: " << text << '\n' << std::flush;
}

std::string countText(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string secondsText(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f s", seconds);
    return text.data();
}

} // namespace vemo::tool
