#pragma once

#include <memory>

#include <QByteArray>
#include <QSocketNotifier>

#include "ConsoleInput.h"

namespace vemo::tool {

/// Lines of stdin, without prompt and echo.
class PipeInput : public ConsoleInput {
    Q_OBJECT

public:
    PipeInput();

    void ask() override;
    void say(const std::string& text) override;
    void close() override;

private:
    void read_();
    void deliver_();

    QSocketNotifier notifier_;
    QByteArray buffer_;
    bool asked_ = false;
    bool atEnd_ = false;
};

} // namespace vemo::tool
