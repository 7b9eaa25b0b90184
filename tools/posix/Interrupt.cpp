#include "Interrupt.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>

namespace vemo::tool {

namespace {

constexpr std::array SIGNALS{SIGINT, SIGTERM};

std::array<int, 2> wakePipe{-1, -1};

extern "C" void onSignal(int) {
    Interrupt::note();
    const char wake = 0;
    [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &wake, 1);
}

} // namespace

Interrupt::Interrupt() {
    reset_();
    if (::pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
        auto notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
        connect(notifier.get(), &QSocketNotifier::activated, this,
                [this, notifier = notifier.get()] {
                    notifier->setEnabled(false);
                    Q_EMIT caught();
                });
        bell_ = std::move(notifier);
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
    bell_.reset();
    for (int& end : wakePipe) {
        ::close(end);
        end = -1;
    }
}

} // namespace vemo::tool
