#pragma once

// gcc and clang say differently with what they build.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SFX_TEST_ASAN 1
#endif
#if __has_feature(thread_sanitizer)
#define SFX_TEST_TSAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define SFX_TEST_ASAN 1
#endif
#if defined(__SANITIZE_THREAD__)
#define SFX_TEST_TSAN 1
#endif

#ifdef SFX_TEST_ASAN
#include <sanitizer/lsan_interface.h>
#endif

namespace sfx_test {

/// While it lives, what this thread allocates may leak without a report.
class LeaksAllowed {
public:
#ifdef SFX_TEST_ASAN
    LeaksAllowed() {
        __lsan_disable();
    }
    ~LeaksAllowed() {
        __lsan_enable();
    }
#else
    LeaksAllowed() {}
    ~LeaksAllowed() {}
#endif
    LeaksAllowed(const LeaksAllowed&) = delete;
    LeaksAllowed& operator=(const LeaksAllowed&) = delete;
};

} // namespace sfx_test
