#pragma once

#include <utility>

#include "support/PulseServer.h"

namespace sfx_test {

// Neither the sinks' names nor in ASCII alone.
inline constexpr const char* kStage = "Stage left";
inline constexpr const char* kFoyer = "Foyer caf\u00e9";

/// A server with two outputs, `stage` and `foyer`, which have the descriptions above.
struct TwoOutputs : PulseServer {
    TwoOutputs() : PulseServer({.withSink = false}) {
        for (const auto& [name, description] : {std::pair{"stage", kStage}, {"foyer", kFoyer}}) {
            Pactl({"load-module", "module-null-sink", QString("sink_name=%1").arg(name),
                   QString("sink_properties='device.description=\"%1\"'").arg(description)});
        }
    }
};

} // namespace sfx_test
