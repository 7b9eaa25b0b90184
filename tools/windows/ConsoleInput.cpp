#include "ConsoleInput.h"

#include "ThreadInput.h"

namespace vemo::tool {

std::unique_ptr<ConsoleInput> ConsoleInput::make() {
    return std::make_unique<ThreadInput>();
}

} // namespace vemo::tool
