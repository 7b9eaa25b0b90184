#pragma once

#include <QByteArray>

#include "ConsoleInput.h"

namespace vemo::tool {

/// Makes lines of the bytes that come, and hands one out each time it is asked.
class LineInput : public ConsoleInput {
    Q_OBJECT

public:
    void ask() override;
    void say(const std::string& text) override;
    void close() override;

protected:
    bool asked() const { return asked_; }
    void take(const QByteArray& bytes);
    void takeEnd();

private:
    /// Whether more bytes are wanted: take() or takeEnd() follows, on this thread.
    virtual void want_(bool more) = 0;
    void deliver_();

    QByteArray buffer_;
    bool asked_ = false;
    bool atEnd_ = false;
};

} // namespace vemo::tool
