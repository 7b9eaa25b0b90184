#include "TerminalDevice.h"

#include <algorithm>
#include <array>

#include <QChar>

#include <windows.h>

namespace vemo::tool {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// The blocks of East Asian scripts and of emoji.
constexpr std::array WIDE{Range{0x1100, 0x115F},   Range{0x2E80, 0x303E},   Range{0x3041, 0xA4CF},
                          Range{0xA960, 0xA97F},   Range{0xAC00, 0xD7A3},   Range{0xF900, 0xFAFF},
                          Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},   Range{0xFFE0, 0xFFE6},
                          Range{0x1F300, 0x1F64F}, Range{0x1F680, 0x1F6FF}, Range{0x1F900, 0x1F9FF},
                          Range{0x20000, 0x3FFFD}};

} // namespace

bool onTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) &&
           (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::size_t terminalWidth() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool known = GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) &&
                       info.srWindow.Right > info.srWindow.Left;
    return known ? static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1) : 80;
}

std::size_t characterWidth(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Control:
    case QChar::Other_Format:
        return 0;
    default:
        break;
    }
    const bool wide = std::any_of(WIDE.begin(), WIDE.end(), [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
    return wide ? 2 : 1;
}

} // namespace vemo::tool
