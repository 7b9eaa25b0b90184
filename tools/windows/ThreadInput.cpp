#include "ThreadInput.h"

#include <array>
#include <condition_variable>
#include <iostream>
#include <mutex>
#include <thread>

#include <windows.h>

#include "Terminal.h"

namespace vemo::tool {

namespace {

constexpr char WIPE[] = "\r\x1b[K";
constexpr wchar_t END_OF_INPUT = L'\x1A'; // Ctrl-Z

HANDLE input() {
    return GetStdHandle(STD_INPUT_HANDLE);
}

bool isTyped() {
    DWORD mode = 0;
    return GetConsoleMode(input(), &mode) != 0;
}

// A whole line, or nothing of one that Ctrl-C broke off. Empty at the end.
std::optional<QByteArray> readTyped() {
    std::wstring line;
    while (!line.ends_with(L'\n')) {
        std::array<wchar_t, 1024> piece{};
        DWORD got = 0;
        SetLastError(ERROR_SUCCESS);
        const bool read = ReadConsoleW(input(), piece.data(), static_cast<DWORD>(piece.size()),
                                       &got, nullptr) != 0;
        if (GetLastError() == ERROR_OPERATION_ABORTED) {
            return QByteArray();
        }
        if (!read || got == 0) {
            return std::nullopt;
        }
        line.append(piece.data(), got);
        if (line.starts_with(END_OF_INPUT)) {
            return std::nullopt;
        }
    }
    return QString::fromStdWString(line).toUtf8();
}

std::optional<QByteArray> readPiped() {
    std::array<char, 4096> piece{};
    DWORD got = 0;
    if (!ReadFile(input(), piece.data(), static_cast<DWORD>(piece.size()), &got, nullptr) ||
        got == 0) {
        return std::nullopt;
    }
    return QByteArray(piece.data(), static_cast<qsizetype>(got));
}

} // namespace

// Outlives the input for as long as the thread waits in a read, which nothing ends.
struct ThreadInput::Shared {
    std::mutex mutex;
    std::condition_variable change;
    ThreadInput* owner = nullptr;
    bool wanted = false;
};

struct ThreadInput::Reader {
    std::shared_ptr<Shared> shared;
    bool typed;

    void operator()() const {
        for (bool more = true; more;) {
            {
                std::unique_lock lock(shared->mutex);
                shared->change.wait(lock, [this] { return shared->wanted || !shared->owner; });
                shared->wanted = false;
                if (!shared->owner) {
                    return;
                }
            }
            const auto piece = typed ? readTyped() : readPiped();
            more = piece.has_value();
            const std::lock_guard lock(shared->mutex);
            if (ThreadInput* const owner = shared->owner) {
                QMetaObject::invokeMethod(
                    owner, [owner, piece] { owner->take_(piece); }, Qt::QueuedConnection);
            }
        }
    }
};

ThreadInput::ThreadInput()
    : prompts_(isTyped() && onTerminal()), shared_(std::make_shared<Shared>()) {
    if (prompts_) {
        std::array<wchar_t, 1024> title{};
        GetConsoleTitleW(title.data(), static_cast<DWORD>(title.size()));
        title_ = title.data();
    }
    shared_->owner = this;
    std::thread(Reader{shared_, isTyped()}).detach();
}

ThreadInput::~ThreadInput() {
    show({});
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->owner = nullptr;
    }
    shared_->change.notify_one();
}

void ThreadInput::ask() {
    if (prompts_) {
        std::cout << PROMPT << std::flush;
    }
    LineInput::ask();
}

void ThreadInput::say(const std::string& text) {
    const bool prompting = prompts_ && asked();
    LineInput::say(prompting ? WIPE + text : text);
    if (prompting) {
        std::cout << PROMPT << std::flush;
    }
}

void ThreadInput::show(const std::string& state) {
    if (prompts_ && state != state_) {
        state_ = state;
        SetConsoleTitleW(
            state.empty()
                ? title_.c_str()
                : QString::fromStdString("[" + state + "] vemo-sfx").toStdWString().c_str());
    }
}

void ThreadInput::close() {
    if (prompts_ && asked()) {
        std::cout << WIPE << std::flush;
    }
    LineInput::close();
}

void ThreadInput::want_(bool more) {
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->wanted = more;
    }
    shared_->change.notify_one();
}

void ThreadInput::take_(const std::optional<QByteArray>& piece) {
    if (piece) {
        take(*piece);
    } else {
        takeEnd();
    }
}

} // namespace vemo::tool
