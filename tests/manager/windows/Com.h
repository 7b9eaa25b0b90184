#pragma once

#include <objbase.h>

namespace sfx_test {

/// COM on the calling thread, as a host has it that lists devices.
struct Com {
    Com() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    ~Com() { CoUninitialize(); }
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
};

} // namespace sfx_test
