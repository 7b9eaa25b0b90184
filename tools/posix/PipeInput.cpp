#include "PipeInput.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace vemo::tool {

PipeInput::PipeInput() : notifier_(STDIN_FILENO, QSocketNotifier::Read) {
    notifier_.setEnabled(false);
    connect(&notifier_, &QSocketNotifier::activated, this, [this] { read_(); });
}

void PipeInput::want_(bool more) {
    notifier_.setEnabled(more);
}

void PipeInput::read_() {
    std::array<char, 4096> piece{};
    const ssize_t got = ::read(STDIN_FILENO, piece.data(), piece.size());
    if (got > 0) {
        take(QByteArray(piece.data(), got));
    } else if (got == 0 || (errno != EINTR && errno != EAGAIN)) {
        takeEnd();
    }
}

} // namespace vemo::tool
