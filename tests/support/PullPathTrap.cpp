#include "PullPathTrap.h"

#include "Sanitizers.h"

#include <cstdlib>

#if defined(__GLIBC__) && !defined(SFX_TEST_ASAN) && !defined(SFX_TEST_TSAN)
#define SFX_TEST_TRAP 1
#endif

#ifdef SFX_TEST_TRAP
#include <atomic>
#include <cerrno>
#include <cstdarg>

#include <dlfcn.h>
#include <execinfo.h>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace sfx_test {

#ifdef SFX_TEST_TRAP

namespace {

thread_local PullPathTrap* armed = nullptr;

void Trap(const char* function) {
    if (PullPathTrap* trap = armed) {
        armed = nullptr;
        trap->Note(function);
        armed = trap;
    }
}

template <typename Function>
Function Next(std::atomic<Function>& cached, const char* name) {
    Function next = cached.load(std::memory_order_acquire);
    if (next == nullptr) {
        PullPathTrap* const trap = armed;
        armed = nullptr;
        next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
        cached.store(next, std::memory_order_release);
        armed = trap;
    }
    return next;
}

} // namespace

bool PullPathTrap::Available() {
    return true;
}

PullPathTrap::PullPathTrap() {
    std::array<void*, 1> stack{};
    backtrace(stack.data(), 1); // its first call loads a library
    armed = this;
}

void PullPathTrap::Disarm() {
    armed = nullptr;
}

void PullPathTrap::Note(const char* function) {
    if (const auto index = static_cast<std::size_t>(count_++); index < first_.size()) {
        Call& call = first_[index];
        call.function = function;
        call.depth = backtrace(call.stack.data(), static_cast<int>(call.stack.size()));
    }
}

std::string PullPathTrap::Report() const {
    std::string text = std::to_string(count_) + " calls";
    for (const Call& call : first_) {
        if (call.function == nullptr) {
            break;
        }
        text += '\n';
        text += call.function;
        char** names = backtrace_symbols(call.stack.data(), call.depth);
        for (int i = 0; i < call.depth; ++i) {
            text += "\n    ";
            text += names[i];
        }
        std::free(static_cast<void*>(names));
    }
    return text;
}

#else

bool PullPathTrap::Available() {
    return false;
}
PullPathTrap::PullPathTrap() = default;
void PullPathTrap::Disarm() {}
void PullPathTrap::Note(const char*) {}
std::string PullPathTrap::Report() const {
    return kUnavailable;
}

#endif

PullPathTrap::~PullPathTrap() {
    Disarm();
}

} // namespace sfx_test

#ifdef SFX_TEST_TRAP

// glibc calls these through its symbol table, so what it allocates itself is seen as well.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

#define SFX_TEST_EXPORT __attribute__((visibility("default")))

SFX_TEST_EXPORT void* malloc(std::size_t size) noexcept {
    sfx_test::Trap("malloc");
    return __libc_malloc(size);
}

SFX_TEST_EXPORT void* calloc(std::size_t count, std::size_t size) noexcept {
    sfx_test::Trap("calloc");
    return __libc_calloc(count, size);
}

SFX_TEST_EXPORT void* realloc(void* block, std::size_t size) noexcept {
    sfx_test::Trap("realloc");
    return __libc_realloc(block, size);
}

SFX_TEST_EXPORT void* memalign(std::size_t alignment, std::size_t size) noexcept {
    sfx_test::Trap("memalign");
    return __libc_memalign(alignment, size);
}

SFX_TEST_EXPORT void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    sfx_test::Trap("aligned_alloc");
    return __libc_memalign(alignment, size);
}

SFX_TEST_EXPORT int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    sfx_test::Trap("posix_memalign");
    *block = __libc_memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

SFX_TEST_EXPORT void free(void* block) noexcept {
    if (block != nullptr) {
        sfx_test::Trap("free");
    }
    __libc_free(block);
}

#define SFX_TEST_FORWARD(result, name, parameters, arguments, ...)                                 \
    SFX_TEST_EXPORT result name parameters __VA_ARGS__ {                                           \
        static std::atomic<result(*) parameters> next;                                             \
        sfx_test::Trap(#name);                                                                     \
        return sfx_test::Next(next, #name) arguments;                                              \
    }

SFX_TEST_FORWARD(int, pthread_mutex_lock, (pthread_mutex_t * mutex), (mutex), noexcept)
SFX_TEST_FORWARD(int, pthread_mutex_trylock, (pthread_mutex_t * mutex), (mutex), noexcept)
SFX_TEST_FORWARD(int, pthread_rwlock_rdlock, (pthread_rwlock_t * lock), (lock), noexcept)
SFX_TEST_FORWARD(int, pthread_rwlock_wrlock, (pthread_rwlock_t * lock), (lock), noexcept)
SFX_TEST_FORWARD(int, pthread_spin_lock, (pthread_spinlock_t * lock), (lock), noexcept)
SFX_TEST_FORWARD(int, sem_wait, (sem_t * semaphore), (semaphore))
SFX_TEST_FORWARD(int, nanosleep, (const timespec* time, timespec* left), (time, left))
SFX_TEST_FORWARD(int, clock_nanosleep,
                 (clockid_t clock, int flags, const timespec* time, timespec* left),
                 (clock, flags, time, left))
SFX_TEST_FORWARD(int, sched_yield, (), (), noexcept)
SFX_TEST_FORWARD(int, poll, (pollfd * files, nfds_t count, int timeout), (files, count, timeout))
SFX_TEST_FORWARD(ssize_t, read, (int file, void* bytes, std::size_t size), (file, bytes, size))
SFX_TEST_FORWARD(ssize_t, write, (int file, const void* bytes, std::size_t size),
                 (file, bytes, size))

// Six arguments are the most a system call takes; the way in which they are passed does not
// depend on how many there are.
SFX_TEST_EXPORT long syscall(long number, ...) noexcept {
    static std::atomic<long (*)(long, ...)> next;
    sfx_test::Trap("syscall");
    std::array<long, 6> a{};
    va_list list;
    va_start(list, number);
    for (long& argument : a) {
        argument = va_arg(list, long); // NOLINT(clang-analyzer-valist.Uninitialized): it is not
    }
    va_end(list);
    return sfx_test::Next(next, "syscall")(number, a[0], a[1], a[2], a[3], a[4], a[5]);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

#endif
