#pragma once

#include <QSocketNotifier>

#include "LineInput.h"

namespace vemo::tool {

/// Lines of stdin, without prompt and echo.
class PipeInput : public LineInput {
    Q_OBJECT

public:
    PipeInput();

private:
    void want_(bool more) override;
    void read_();

    QSocketNotifier notifier_;
};

} // namespace vemo::tool
