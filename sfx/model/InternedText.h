#pragma once

#include <string>

namespace vemo::audio {

/// `text` as a pointer that stays good to the end of the process, static destruction included. The
/// same text is stored once, so a fault that repeats does not make the process grow. Any thread.
const char* InternText(const std::string& text);

} // namespace vemo::audio
