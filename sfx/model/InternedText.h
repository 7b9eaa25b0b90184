#pragma once

#include <string>

namespace vemo::audio {

/// `text` as a pointer that stays good to the end of the process, static destruction included. The
/// same text is stored once, so a fault or a device that comes again does not make the process
/// grow. Any thread.
const char* InternText(const std::string& text);
const wchar_t* InternText(const std::wstring& text);

} // namespace vemo::audio
