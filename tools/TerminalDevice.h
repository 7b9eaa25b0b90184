#pragma once

#include <cstddef>

namespace vemo::tool {

/// True when stdout is a terminal that understands escape sequences.
bool onTerminal();

/// Columns of the terminal on stdout; 80 if there is none.
std::size_t terminalWidth();

/// Columns that the character takes on a terminal.
std::size_t characterWidth(char32_t character);

} // namespace vemo::tool
