#include "TerminalDevice.h"

#include <algorithm>
#include <cwchar>
#include <sys/ioctl.h>
#include <unistd.h>

namespace vemo::tool {

bool onTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

std::size_t terminalWidth() {
    winsize size{};
    const bool known = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

std::size_t characterWidth(char32_t character) {
    return static_cast<std::size_t>(std::max(::wcwidth(static_cast<wchar_t>(character)), 0));
}

} // namespace vemo::tool
