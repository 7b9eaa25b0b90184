#include "LineInput.h"

#include <iostream>

namespace vemo::tool {

namespace {

// What comes without a newline is not kept for ever.
constexpr qsizetype LONGEST_LINE = 65536;

} // namespace

void LineInput::ask() {
    asked_ = true;
    QMetaObject::invokeMethod(this, &LineInput::deliver_, Qt::QueuedConnection);
}

void LineInput::say(const std::string& text) {
    std::cout << text << '\n' << std::flush;
}

void LineInput::close() {
    asked_ = false;
    want_(false);
}

void LineInput::take(const QByteArray& bytes) {
    buffer_.append(bytes);
    deliver_();
}

void LineInput::takeEnd() {
    atEnd_ = true;
    deliver_();
}

void LineInput::deliver_() {
    if (!asked_) {
        return;
    }
    const qsizetype end = buffer_.indexOf('\n');
    const bool whole = end >= 0 || buffer_.size() > LONGEST_LINE || (atEnd_ && !buffer_.isEmpty());
    want_(!whole && !atEnd_);
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
