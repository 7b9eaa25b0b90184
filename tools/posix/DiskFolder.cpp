#include "DiskFolder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

class Descriptor {
public:
    Descriptor(const fs::path& path, int flags)
        : number_(::open(path.c_str(), flags | O_CLOEXEC, 0666)) {
        if (number_ < 0) {
            failAt("cannot open", path, lastError());
        }
    }
    ~Descriptor() { ::close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }

private:
    int number_;
};

} // namespace

fs::path makeFolder(const fs::path& prefix, std::error_code& error) {
    std::string name = prefix.string() + "XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) {
        error = lastError();
        return {};
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::chmod(name.c_str(), 0777 & ~mask);
    return name;
}

void writeNewFile(const fs::path& path, const unsigned char* bytes, std::size_t size) {
    const Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL);
    while (size > 0) {
        const ssize_t written = ::write(file.number(), bytes, size);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            failAt("cannot write", path, lastError());
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    if (::fsync(file.number()) != 0) {
        failAt("cannot write", path, lastError());
    }
}

void syncFolder(const fs::path& folder) {
    const Descriptor descriptor(folder, O_RDONLY | O_DIRECTORY);
    // Some file systems have no sync for folders; the files themselves are already safe.
    if (::fsync(descriptor.number()) != 0 && errno != EINVAL) {
        failAt("cannot write", folder, lastError());
    }
}

std::error_code moveFolder(const fs::path& from, const fs::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : lastError();
}

bool exchangeFolders([[maybe_unused]] const fs::path& one, [[maybe_unused]] const fs::path& other) {
#ifdef RENAME_EXCHANGE
    return ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
#else
    return false;
#endif
}

} // namespace vemo::tool
