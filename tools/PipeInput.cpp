#include "PipeInput.h"

#include <array>
#include <cerrno>
#include <iostream>
#include <unistd.h>

namespace vemo::tool {

namespace {

// What comes without a newline is not kept for ever.
constexpr qsizetype LONGEST_LINE = 65536;

} // namespace

PipeInput::PipeInput() : notifier_(STDIN_FILENO, QSocketNotifier::Read) {
    notifier_.setEnabled(false);
    connect(&notifier_, &QSocketNotifier::activated, this, [this] { read_(); });
}

void PipeInput::ask() {
    asked_ = true;
    QMetaObject::invokeMethod(this, &PipeInput::deliver_, Qt::QueuedConnection);
}

void PipeInput::say(const std::string& text) {
    std::cout << text << '\n' << std::flush;
}

void PipeInput::close() {
    asked_ = false;
    notifier_.setEnabled(false);
}

void PipeInput::read_() {
    std::array<char, 4096> piece{};
    const ssize_t got = ::read(STDIN_FILENO, piece.data(), piece.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) {
        return;
    }
    atEnd_ = got <= 0;
    buffer_.append(piece.data(), std::max<ssize_t>(got, 0));
    deliver_();
}

void PipeInput::deliver_() {
    if (!asked_) {
        return;
    }
    const qsizetype end = buffer_.indexOf('\n');
    const bool whole = end >= 0 || buffer_.size() > LONGEST_LINE || (atEnd_ && !buffer_.isEmpty());
    notifier_.setEnabled(!whole && !atEnd_);
    if (whole) {
        asked_ = false;
        const QString text = QString::fromUtf8(end >= 0 ? buffer_.left(end) : buffer_);
        buffer_.remove(0, end >= 0 ? end + 1 : buffer_.size());
        Q_EMIT line(text);
    } else if (atEnd_) {
        asked_ = false;
        Q_EMIT ended();
    }
}

} // namespace vemo::tool
