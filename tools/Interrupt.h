#pragma once

#include <memory>

#include <QObject>

namespace vemo::tool {

/// Catches SIGINT and SIGTERM, and on Windows Ctrl-C, Ctrl-Break and the closing of the console,
/// while it lives. The first one is noted, the second leaves at once with exit code 130. One at a
/// time per process.
class Interrupt : public QObject {
    Q_OBJECT

public:
    Interrupt();
    ~Interrupt() override;

    static bool requested();
    /// Throws ToolError (Interrupted) once a signal has come; for work without an event loop.
    static void checkpoint();

    /// For the handler, whatever it interrupts: a signal has come.
    static void note();

Q_SIGNALS:
    /// The first signal, through the event loop.
    void caught();

private:
    static void reset_();

    /// What brings the signal into the event loop, where something has to.
    std::unique_ptr<QObject> bell_;
};

} // namespace vemo::tool
