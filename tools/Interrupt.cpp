#include "Interrupt.h"

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

#include "ToolError.h"

namespace vemo::tool {

namespace {

constexpr std::array SIGNALS{SIGINT, SIGTERM};

std::atomic<bool> signalled{false};
static_assert(std::atomic<bool>::is_always_lock_free);
std::array<int, 2> wakePipe{-1, -1};

extern "C" void onSignal(int) {
    if (signalled.exchange(true)) {
        ::_exit(static_cast<int>(ExitCode::Interrupted));
    }
    const char wake = 0;
    [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &wake, 1);
}

} // namespace

Interrupt::Interrupt() {
    signalled = false;
    if (::pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
        notifier_ = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
        connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
            notifier_->setEnabled(false);
            Q_EMIT caught();
        });
    }
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (const int number : SIGNALS) {
        ::sigaction(number, &action, nullptr);
    }
}

Interrupt::~Interrupt() {
    for (const int number : SIGNALS) {
        ::signal(number, SIG_DFL);
    }
    notifier_.reset();
    for (int& end : wakePipe) {
        ::close(end);
        end = -1;
    }
}

bool Interrupt::requested() {
    return signalled;
}

void Interrupt::checkpoint() {
    if (signalled) {
        throw ToolError(ExitCode::Interrupted, "interrupted");
    }
}

} // namespace vemo::tool
