#pragma once

#ifdef _WIN32
#include <objbase.h>
#endif

namespace vemo::audio {

/// COM on the calling thread, on Windows, for as long as it lives. Qt's sinks and decoders take an
/// apartment of their own there and give it back while they still hold objects of it: this one
/// outlives them. Single-threaded as theirs, or they would give back what they did not get.
class ComApartment {
#ifdef _WIN32
public:
    ComApartment() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComApartment() {
        if (entered_)
            CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    bool entered_;
#endif
};

} // namespace vemo::audio
