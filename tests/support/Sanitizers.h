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
