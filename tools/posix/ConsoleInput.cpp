#include "ConsoleInput.h"

#include <unistd.h>

#include "LineEditor.h"
#include "PipeInput.h"

namespace vemo::tool {

std::unique_ptr<ConsoleInput> ConsoleInput::make() {
    if (::isatty(STDIN_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 1) {
        return std::make_unique<LineEditor>();
    }
    return std::make_unique<PipeInput>();
}

} // namespace vemo::tool
