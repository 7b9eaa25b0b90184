#include "Terminal.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>

#include <QList>
#include <QString>

namespace vemo::tool {

std::size_t displayWidth(const std::string& text) {
    std::size_t width = 0;
    for (const char32_t character : QString::fromStdString(text).toUcs4()) {
        width += characterWidth(character);
    }
    return width;
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, displayWidth(text)), ' ');
}

Terminal::Terminal() : interactive_(onTerminal()) {}

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

std::string numberText(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.4g", value);
    return text.data();
}

std::string secondsText(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f s", seconds);
    return text.data();
}

} // namespace vemo::tool
