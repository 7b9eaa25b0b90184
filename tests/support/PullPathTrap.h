#pragma once

#include <array>
#include <string>

namespace sfx_test {

/// Counts every allocation, every lock and every common system call of the current thread from
/// construction to Disarm(). Linking the target sfx_pull_path_trap replaces the functions for the
/// whole test program; other threads, and this one while no trap is armed, are not counted.
///
/// Blind spots: a QMutex or a std::atomic wait without contention is an atomic operation and
/// passes; with contention its futex call is seen. free(nullptr) is harmless and passes.
///
///     if (!PullPathTrap::Available()) GTEST_SKIP() << PullPathTrap::kUnavailable;
///     PullPathTrap trap;
///     stream.read(buffer, size);
///     trap.Disarm();
///     EXPECT_EQ(trap.Count(), 0) << trap.Report();
class PullPathTrap {
public:
    /// False where the functions cannot be replaced: sanitizers bring their own, and there is
    /// nothing to forward to without glibc.
    static bool Available();
    static constexpr const char* kUnavailable =
        "the trap needs glibc and a build without address or thread sanitizer";

    PullPathTrap();
    ~PullPathTrap();
    PullPathTrap(const PullPathTrap&) = delete;
    PullPathTrap& operator=(const PullPathTrap&) = delete;

    void Disarm();
    int Count() const { return count_; }
    /// One line per call with the function's name, and from where the first few came.
    std::string Report() const;

    /// Called by the replaced functions.
    void Note(const char* function);

private:
    struct Call {
        const char* function = nullptr;
        int depth = 0;
        std::array<void*, 24> stack{};
    };
    int count_ = 0;
    std::array<Call, 8> first_;
};

} // namespace sfx_test
