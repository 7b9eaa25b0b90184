#include "Interrupt.h"

#include <atomic>

#include "System.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

std::atomic<bool> signalled{false};
static_assert(std::atomic<bool>::is_always_lock_free);

} // namespace

void Interrupt::reset_() {
    signalled = false;
}

void Interrupt::note() {
    if (signalled.exchange(true)) {
        leave(ExitCode::Interrupted);
    }
}

bool Interrupt::requested() {
    return signalled;
}

void Interrupt::checkpoint() {
    if (signalled) {
        throw ToolError(ExitCode::Interrupted, "interrupted");
    }
}

} // namespace vemo::tool
