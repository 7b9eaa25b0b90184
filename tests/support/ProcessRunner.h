#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

#include "Waiting.h"

namespace sfx_test {

/// Makes the child get SIGKILL when the thread that starts it ends, however it ends; an aborted
/// test leaves nothing behind. Called before start(). `inChild` runs in the child before exec.
void DieWithParent(QProcess& process, std::function<void()> inChild = {});

/// A program under test. Used on one thread.
class ProcessRunner {
public:
    struct Result {
        /// -1 when the program crashed, was killed, or did not start.
        int exitCode = -1;
        /// The deadline passed and the program was killed.
        bool timedOut = false;
        QByteArray out;
        QByteArray err;
    };

    /// Starts the program with this process's environment and `environment` on top.
    /// Throws std::runtime_error naming the program when it cannot be started.
    ProcessRunner(const QString& program, const QStringList& arguments,
                  const std::map<QString, QString>& environment = {});
    /// Kills the program if it still runs.
    ~ProcessRunner();
    ProcessRunner(const ProcessRunner&) = delete;
    ProcessRunner& operator=(const ProcessRunner&) = delete;

    /// Runs to the end.
    static Result Run(const QString& program, const QStringList& arguments,
                      const std::map<QString, QString>& environment = {},
                      std::chrono::milliseconds deadline = kDeadline);

    /// Waits until the text has appeared on standard output or standard error; when it does not,
    /// shows what has.
    bool WaitForOutput(const QByteArray& text, std::chrono::milliseconds deadline = kDeadline);
    /// On Windows every signal is a Ctrl-C at the program's console.
    void SendSignal(int signal);
    /// Writes to the program's standard input.
    void Write(const QByteArray& text);
    void CloseInput();
    /// Waits for the program's end, kills it after the deadline.
    Result Finish(std::chrono::milliseconds deadline = kDeadline);

private:
    void Collect();

    QProcess process_;
    Result result_;
};

} // namespace sfx_test
