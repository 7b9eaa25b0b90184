#pragma once

#include <cstdint>

// SFX_KERNEL marks a loop over samples that is compiled twice, for AVX2 and for the baseline; the
// loader picks one. Sanitizer runtimes are not up yet when it does so, and Windows has no such
// choice at load time: there the baseline stands alone. Both give the same bits.
#if defined(__x86_64__) && defined(__linux__) && defined(__GLIBC__) && defined(__GNUC__) &&        \
    !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) &&      \
    !defined(SFX_BASELINE_KERNELS)
#define SFX_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define SFX_KERNEL
#endif

namespace vemo::audio {

/// Truncates toward zero. What does not fit, NaN included, becomes INT32_MIN, as the processor's
/// own conversion has it. Written as two selects so that loops over it vectorise.
inline std::int32_t truncated(float value) noexcept {
    constexpr float kLowest = -2147483648.0F;
    const float belowTop = value < 2147483648.0F ? value : kLowest;
    return static_cast<std::int32_t>(belowTop > kLowest ? belowTop : kLowest);
}

} // namespace vemo::audio
