#pragma once

#include <functional>

#include <CLI/CLI.hpp>

#include "ToolError.h"

namespace vemo::tool {

/// What the chosen subcommand does, run after the whole command line has been read.
using Command = std::function<ExitCode()>;

/// Each adds its subcommand to `app`; when the user asks for it, it stores itself in `chosen`,
/// which must outlive `app`.
void addPackCommand(CLI::App& app, Command& chosen);
void addVerifyCommand(CLI::App& app, Command& chosen);
void addListCommand(CLI::App& app, Command& chosen);
void addPlayCommand(CLI::App& app, Command& chosen);
void addPlayFileCommand(CLI::App& app, Command& chosen);
void addShowCommand(CLI::App& app, Command& chosen);
void addConsoleCommand(CLI::App& app, Command& chosen);
void addDevicesCommand(CLI::App& app, Command& chosen);

} // namespace vemo::tool
