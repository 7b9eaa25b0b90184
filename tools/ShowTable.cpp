#include "ShowTable.h"

#include <algorithm>
#include <array>

#include "JsonOut.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

constexpr std::size_t COLUMNS = 9;
using Row = std::array<std::string, COLUMNS>;

Row rowOf(const audio::sfx::SfxDto& event) {
    return {event.eventId(),
            event.name(),
            event.effectId(),
            numberText(event.volume()),
            numberText(event.pan()),
            numberText(event.reverb()),
            std::to_string(event.fadeIn()),
            std::to_string(event.fadeOut()),
            event.repeats() < 0 ? "endless" : std::to_string(event.repeats())};
}

} // namespace

std::vector<std::string> showTable(const std::list<audio::sfx::SfxDto>& events) {
    std::vector<Row> rows{
        {"EVENT", "NAME", "EFFECT", "VOLUME", "PAN", "REVERB", "FADE-IN", "FADE-OUT", "REPEATS"}};
    std::transform(events.begin(), events.end(), std::back_inserter(rows), rowOf);
    std::array<std::size_t, COLUMNS> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < COLUMNS; ++i) {
            widths[i] = std::max(widths[i], displayWidth(row[i]));
        }
    }
    std::vector<std::string> lines;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i + 1 < COLUMNS; ++i) {
            line += padded(row[i], widths[i] + 2);
        }
        lines.push_back(line + row.back());
    }
    return lines;
}

std::string showJson(const std::list<audio::sfx::SfxDto>& events) {
    JsonOut json;
    const auto number = [&json](const char* key, double value) {
        json.Key(key);
        json.Double(value);
    };
    const auto count = [&json](const char* key, int value) {
        json.Key(key);
        json.Int(value);
    };
    json.StartArray();
    for (const audio::sfx::SfxDto& event : events) {
        json.StartObject();
        json.member("event", event.eventId());
        json.member("name", event.name());
        json.member("effect", event.effectId());
        number("volume", event.volume());
        number("pan", event.pan());
        number("reverb", event.reverb());
        count("fadeIn", event.fadeIn());
        count("fadeOut", event.fadeOut());
        count("repeats", event.repeats());
        json.EndObject();
    }
    json.EndArray();
    return json.text();
}

} // namespace vemo::tool
