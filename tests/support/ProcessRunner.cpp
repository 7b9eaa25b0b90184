#include "ProcessRunner.h"

#include <iostream>
#include <stdexcept>
#include <utility>

#include <QDeadlineTimer>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif
#ifdef Q_OS_WIN
#include <windows.h>
#endif

#include "Sanitizers.h"

#if defined(SFX_TEST_TSAN) && defined(Q_OS_LINUX)
#include <cstdarg>

// QProcess shares its memory with the child until exec. TSan's own clone() takes that child for a
// fork and from then on overlooks the parent's locks, so the call goes past it.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __clone(int (*)(void*), void*, int, void*, ...);
extern "C" __attribute__((visibility("default"))) int clone(int (*run)(void*), void* stack,
                                                            int flags, void* argument, ...) {
    va_list list;
    va_start(list, argument);
    void* parentId = va_arg(list, void*);
    void* storage = va_arg(list, void*);
    void* childId = va_arg(list, void*);
    va_end(list);
    return __clone(run, stack, flags, argument, parentId, storage, childId);
}
// NOLINTEND(bugprone-reserved-identifier)
#endif

namespace sfx_test {

void DieWithParent(QProcess& process, std::function<void()> inChild) {
#ifdef Q_OS_LINUX
    process.setChildProcessModifier([parent = getpid(), inChild = std::move(inChild)] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) {
            _exit(1); // the parent died before the line above
        }
        if (inChild) {
            inChild();
        }
    });
#else
    static_cast<void>(process);
    static_cast<void>(inChild);
#endif
}

#ifdef Q_OS_WIN
namespace {

// Ctrl-C reaches every program of a console, and only from a program that is one of them. So each
// program under test has a console of its own, which is joined for a moment.
void PressCtrlC(DWORD process) {
    [[maybe_unused]] static const BOOL spared = SetConsoleCtrlHandler(
        +[](DWORD) -> BOOL { return TRUE; }, TRUE);
    FreeConsole();
    const bool pressed = AttachConsole(process) && GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    const DWORD error = GetLastError();
    FreeConsole();
    AttachConsole(ATTACH_PARENT_PROCESS);
    if (!pressed) {
        throw std::runtime_error("cannot interrupt the program: error " + std::to_string(error));
    }
}

} // namespace
#endif

ProcessRunner::ProcessRunner(const QString& program, const QStringList& arguments,
                             const std::map<QString, QString>& environment) {
    auto variables = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : environment) {
        variables.insert(name, value);
    }
    process_.setProcessEnvironment(variables);
    DieWithParent(process_);
#ifdef Q_OS_WIN
    process_.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments* created) { created->flags |= CREATE_NO_WINDOW; });
#endif
    process_.start(program, arguments);
    if (!process_.waitForStarted()) {
        throw std::runtime_error("cannot start " + program.toStdString() + ": " +
                                 process_.errorString().toStdString());
    }
}

ProcessRunner::~ProcessRunner() {
    process_.kill();
    process_.waitForFinished();
}

ProcessRunner::Result ProcessRunner::Run(const QString& program, const QStringList& arguments,
                                         const std::map<QString, QString>& environment,
                                         std::chrono::milliseconds deadline) {
    ProcessRunner runner(program, arguments, environment);
    runner.CloseInput();
    return runner.Finish(deadline);
}

bool ProcessRunner::WaitForOutput(const QByteArray& text, std::chrono::milliseconds deadline) {
    const auto appeared = [&] {
        Collect();
        return result_.out.contains(text) || result_.err.contains(text);
    };
    WaitFor([&] { return appeared() || process_.state() == QProcess::NotRunning; }, deadline);
    const bool found = appeared();
    if (!found) {
        std::cerr << "no '" << text.toStdString() << "' in:\n"
                  << result_.out.toStdString() << result_.err.toStdString();
    }
    return found;
}

void ProcessRunner::SendSignal(int signal) {
#ifdef Q_OS_UNIX
    ::kill(static_cast<pid_t>(process_.processId()), signal);
#else
    static_cast<void>(signal);
    PressCtrlC(static_cast<DWORD>(process_.processId()));
#endif
}

void ProcessRunner::Write(const QByteArray& text) {
    process_.write(text);
    process_.waitForBytesWritten();
}

void ProcessRunner::CloseInput() {
    process_.closeWriteChannel();
}

ProcessRunner::Result ProcessRunner::Finish(std::chrono::milliseconds deadline) {
    if (process_.state() != QProcess::NotRunning &&
        !process_.waitForFinished(static_cast<int>(deadline.count()))) {
        result_.timedOut = true;
        process_.kill();
        process_.waitForFinished();
    }
    Collect();
    if (process_.exitStatus() == QProcess::NormalExit && !result_.timedOut) {
        result_.exitCode = process_.exitCode();
    }
    return result_;
}

void ProcessRunner::Collect() {
    result_.out += process_.readAllStandardOutput();
    result_.err += process_.readAllStandardError();
}

} // namespace sfx_test
