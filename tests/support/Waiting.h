#pragma once

#include <chrono>
#include <functional>

namespace sfx_test {

/// Long enough for a loaded machine; only a failing test ever waits this long.
inline constexpr std::chrono::milliseconds kDeadline{10000};

/// Runs the calling thread's event loop until `holds` answers true, or the deadline has passed.
/// Returns what it answered last. It is asked on the calling thread every few milliseconds.
bool WaitFor(const std::function<bool()>& holds, std::chrono::milliseconds deadline = kDeadline);

} // namespace sfx_test
