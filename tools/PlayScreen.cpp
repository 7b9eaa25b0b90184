#include "PlayScreen.h"

#include <algorithm>
#include <cmath>

#include "PcmLevel.h"

namespace vemo::tool {

namespace {

constexpr std::chrono::milliseconds LINE_EVERY{500};
constexpr std::chrono::milliseconds DRAW_EVERY{60};
// Long enough for something to be heard, short enough for the shortest effects.
constexpr std::chrono::milliseconds FIRST_AFTER{100};

std::string bar(double level) {
    constexpr int WIDTH = 12;
    constexpr double FLOOR_DB = -48.0;
    const double decibel = level > 0.0 ? 20.0 * std::log10(level) : FLOOR_DB;
    const int filled =
        std::clamp(static_cast<int>(std::lround((1.0 - decibel / FLOOR_DB) * WIDTH)), 0, WIDTH);
    std::string text(WIDTH, '.');
    std::fill_n(text.begin(), filled, '#');
    return text;
}

std::string lengthText(const Voice& voice) {
    const auto all = voice.allSeconds();
    if (all && voice.seconds() <= 0.0) {
        return "not decoded yet";
    }
    return all ? secondsText(*all) : "without end";
}

std::string settingsText(const audio::sfx::SfxDto& record) {
    std::string text;
    const auto add = [&text](const char* what, double value, double usual, const char* unit) {
        if (std::abs(value - usual) > 1e-6) {
            text += std::string(", ") + what + " " + numberText(value) + unit;
        }
    };
    add("volume", record.volume(), 1.0, "");
    add("pan", record.pan(), 0.5, "");
    add("reverb", record.reverb(), 0.0, "");
    add("fade-in", record.fadeIn(), 0.0, " ms");
    if (record.repeats() > 0) {
        add("repeats", record.repeats(), 0.0, "");
    }
    return text;
}

} // namespace

std::string statusText(Voice& voice) {
    const auto all = voice.allSeconds();
    // The sink drains for a moment after the last sample.
    const double position = std::min(voice.elapsed(), all.value_or(voice.elapsed()));
    std::string text = voice.label() + "  " + secondsText(position) + (all ? " of " : ", ");
    text += lengthText(voice);
    if (const auto level = voice.level()) {
        text += "  " + bar(*level) + " " + decibelText(*level);
    }
    return text + (voice.stopped() ? "  fading out" : "");
}

std::string startText(const Voice& voice) {
    return "playing " + voice.title() + ", " + lengthText(voice) + settingsText(voice.record());
}

std::string endText(const Voice& voice) {
    return (voice.stopped() ? "stopped " : "finished ") + voice.label() + " after " +
           secondsText(voice.elapsed());
}

std::chrono::milliseconds PlayScreen::interval_() const {
    return terminal_.interactive() ? DRAW_EVERY : LINE_EVERY;
}

void PlayScreen::started(Voice& voice) {
    terminal_.line(startText(voice));
    lastLine_ = std::chrono::steady_clock::now() - interval_() + FIRST_AFTER;
}

void PlayScreen::playing(const std::vector<Voice*>& voices) {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastLine_ < interval_()) {
        return;
    }
    lastLine_ = now;
    std::string together;
    for (Voice* voice : voices) {
        if (terminal_.interactive()) {
            together += (together.empty() ? "" : " | ") + statusText(*voice);
        } else {
            terminal_.line("  " + statusText(*voice));
        }
    }
    terminal_.progress(together);
}

void PlayScreen::ended(Voice& voice) {
    terminal_.line(endText(voice));
}

} // namespace vemo::tool
