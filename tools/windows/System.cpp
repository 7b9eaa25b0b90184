#include "System.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <optional>

#include <QRegularExpression>
#include <QString>

#include <windows.h>

#include <shellapi.h>

namespace vemo::tool {

namespace {

struct TerminalState {
    UINT codePage = 0;
    std::optional<DWORD> mode;
};
TerminalState before;

HANDLE output() {
    return GetStdHandle(STD_OUTPUT_HANDLE);
}

} // namespace

std::vector<std::string> commandLine(int /*argc*/, char** /*argv*/) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words && i < count; ++i) {
        arguments.push_back(QString::fromWCharArray(words.get()[i]).toStdString());
    }
    return arguments;
}

void prepareStreams() {
    for (std::FILE* const stream : {stdout, stderr}) {
        ::_setmode(::_fileno(stream), _O_BINARY);
        // Written piece by piece, a character of several bytes would come apart on the terminal.
        std::setvbuf(stream, nullptr, _IOFBF, BUFSIZ);
    }
    before.codePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    DWORD mode = 0;
    if (GetConsoleMode(output(), &mode)) {
        before.mode = mode;
        SetConsoleMode(output(),
                       mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

void restoreStreams() {
    std::fflush(nullptr);
    if (before.mode) {
        SetConsoleMode(output(), *before.mode);
    }
    SetConsoleOutputCP(before.codePage);
}

void leave(ExitCode code) {
    // _Exit() would still let every DLL clean up, with its threads gone.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::_Exit(static_cast<int>(code));
}

std::string reasonText(const std::error_code& error) {
    // The standard library answers in the code page of the machine.
    if (error.category() != std::system_category()) {
        return error.message();
    }
    QString text = qt_error_string(error.value()).simplified();
    while (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text.toStdString();
}

// As everywhere on Windows, the case of letters does not count.
bool fitsGlob(const std::string& pattern, const std::string& fileName) {
    return QRegularExpression(
               QRegularExpression::wildcardToRegularExpression(QString::fromStdString(pattern)),
               QRegularExpression::CaseInsensitiveOption)
        .match(QString::fromStdString(fileName))
        .hasMatch();
}

} // namespace vemo::tool
