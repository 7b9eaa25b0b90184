#include "DiskFolder.h"

#include <algorithm>
#include <random>

#include <windows.h>

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

std::error_code lastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

class File {
public:
    explicit File(const fs::path& path)
        : handle_(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {
        if (handle_ == INVALID_HANDLE_VALUE) {
            failAt("cannot open", path, lastError());
        }
    }
    ~File() { CloseHandle(handle_); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    HANDLE handle() const { return handle_; }

private:
    HANDLE handle_;
};

std::error_code moveWhenLetGo(const fs::path& from, const fs::path& to) {
    // Who looks through every new file, such as a virus scanner, holds it for a moment.
    constexpr int TRIES = 20;
    constexpr DWORD PAUSE_MS = 50;
    for (int i = 1; !MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH); ++i) {
        const std::error_code error = lastError();
        const bool held = error.value() == ERROR_SHARING_VIOLATION ||
                          (error.value() == ERROR_ACCESS_DENIED &&
                           GetFileAttributesW(to.c_str()) == INVALID_FILE_ATTRIBUTES);
        if (!held || i == TRIES) {
            return error;
        }
        Sleep(PAUSE_MS);
    }
    return {};
}

} // namespace

fs::path makeFolder(const fs::path& prefix, std::error_code& error) {
    constexpr std::wstring_view LETTERS = L"abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr int LENGTH = 6;
    std::random_device random;
    for (;;) {
        std::wstring name = prefix.native();
        std::generate_n(std::back_inserter(name), LENGTH,
                        [&] { return LETTERS[random() % LETTERS.size()]; });
        if (CreateDirectoryW(name.c_str(), nullptr)) {
            return name;
        }
        error = lastError();
        if (error.value() != ERROR_ALREADY_EXISTS) {
            return {};
        }
        error.clear();
    }
}

void writeNewFile(const fs::path& path, const unsigned char* bytes, std::size_t size) {
    constexpr std::size_t PIECE = std::size_t{1} << 26;
    const File file(path);
    while (size > 0) {
        DWORD written = 0;
        if (!WriteFile(file.handle(), bytes, static_cast<DWORD>(std::min(size, PIECE)), &written,
                       nullptr)) {
            failAt("cannot write", path, lastError());
        }
        bytes += written;
        size -= written;
    }
    if (!FlushFileBuffers(file.handle())) {
        failAt("cannot write", path, lastError());
    }
}

// The file system's journal keeps the names, and a rename is written through.
void syncFolder(const fs::path& /*folder*/) {}

std::error_code moveFolder(const fs::path& from, const fs::path& to) {
    // Nothing takes the place of a folder here, however empty it is.
    const bool wasThere = RemoveDirectoryW(to.c_str());
    if (!wasThere && GetLastError() == ERROR_DIR_NOT_EMPTY) {
        return std::make_error_code(std::errc::directory_not_empty);
    }
    const std::error_code error = moveWhenLetGo(from, to);
    if (error && wasThere) {
        CreateDirectoryW(to.c_str(), nullptr);
    }
    return error;
}

bool exchangeFolders(const fs::path& /*one*/, const fs::path& /*other*/) {
    return false;
}

} // namespace vemo::tool
