#pragma once

#include <memory>
#include <vector>

#include <CLI/CLI.hpp>

#include "PlaySession.h"
#include "ToolError.h"

namespace vemo::tool {

/// More playbacks than the library has threads for would wait for each other.
inline constexpr int MOST_TOGETHER = 16;
inline constexpr double LONGEST_SECONDS = 86400;

/// --stop-after and --together.
void addOrderOptions(CLI::App& command, PlayOrder& order);

/// Plays and shows the voices; see PlaySession::run().
ExitCode playAll(std::vector<std::unique_ptr<Voice>> voices, const PlayOrder& order);

} // namespace vemo::tool
