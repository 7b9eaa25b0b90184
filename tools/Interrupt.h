#pragma once

#include <functional>
#include <memory>

#include <QObject>

class QSocketNotifier;

namespace vemo::tool {

/// Catches SIGINT and SIGTERM while it lives. The first one is noted, the second leaves at once
/// with exit code 130. One at a time per process.
class Interrupt : public QObject {
    Q_OBJECT

public:
    Interrupt();
    ~Interrupt() override;

    static bool requested();
    /// Throws ToolError (Interrupted) once a signal has come; for work without an event loop.
    static void checkpoint();

Q_SIGNALS:
    /// The first signal, through the event loop.
    void caught();

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace vemo::tool
