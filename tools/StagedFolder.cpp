#include "StagedFolder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& what, const fs::path& path,
                       const std::error_code& error) {
    throw ToolError(ExitCode::Refused, what + " " + path.string() + ": " + error.message());
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

class Descriptor {
public:
    Descriptor(const fs::path& path, int flags)
        : number_(::open(path.c_str(), flags | O_CLOEXEC, 0666)) {
        if (number_ < 0) {
            fail("cannot open", path, lastError());
        }
    }
    ~Descriptor() { ::close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }

private:
    int number_;
};

void syncFolder(const fs::path& folder) {
    const Descriptor descriptor(folder, O_RDONLY | O_DIRECTORY);
    // Some file systems have no sync for folders; the files themselves are already safe.
    if (::fsync(descriptor.number()) != 0 && errno != EINVAL) {
        fail("cannot write", folder, lastError());
    }
}

} // namespace

StagedFolder::StagedFolder(const fs::path& target) {
    std::error_code error;
    target_ = fs::weakly_canonical(fs::absolute(target), error);
    if (error) {
        fail("cannot use", target, error);
    }
    if (!target_.has_filename()) {
        target_ = target_.parent_path();
    }
    makeParents_();
    std::string name = (target_.parent_path() / ".").string();
    name += target_.filename().string() + ".XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) {
        const std::error_code reason = lastError();
        for (const fs::path& parent : madeParents_) {
            fs::remove(parent, error);
        }
        fail("cannot write in", target_.parent_path(), reason);
    }
    stage_ = name;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::chmod(name.c_str(), 0777 & ~mask);
}

StagedFolder::~StagedFolder() {
    std::error_code ignored;
    fs::remove_all(stage_, ignored);
    if (!committed_) {
        for (const fs::path& parent : madeParents_) {
            fs::remove(parent, ignored);
        }
    }
}

void StagedFolder::makeParents_() {
    std::vector<fs::path> missing;
    for (fs::path parent = target_.parent_path(); !fs::exists(parent);
         parent = parent.parent_path()) {
        missing.push_back(parent);
    }
    std::error_code error;
    fs::create_directories(target_.parent_path(), error);
    if (error) {
        std::error_code ignored;
        for (const fs::path& parent : missing) {
            fs::remove(parent, ignored);
        }
        fail("cannot make", target_.parent_path(), error);
    }
    madeParents_ = std::move(missing);
}

void StagedFolder::write(const std::string& name, const unsigned char* bytes, std::size_t size) {
    const fs::path path = stage_ / name;
    const Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL);
    while (size > 0) {
        const ssize_t written = ::write(file.number(), bytes, size);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            fail("cannot write", path, lastError());
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    if (::fsync(file.number()) != 0) {
        fail("cannot write", path, lastError());
    }
}

void StagedFolder::commit() {
    syncFolder(stage_);
    // Takes the place of nothing and of an empty folder.
    if (::rename(stage_.c_str(), target_.c_str()) != 0) {
        if (errno != ENOTEMPTY && errno != EEXIST) {
            fail("cannot put in place", target_, lastError());
        }
        replace_();
    }
    committed_ = true;
    syncFolder(target_.parent_path());
}

void StagedFolder::replace_() {
#ifdef RENAME_EXCHANGE
    if (::renameat2(AT_FDCWD, stage_.c_str(), AT_FDCWD, target_.c_str(), RENAME_EXCHANGE) == 0) {
        return;
    }
#endif
    // Not every file system can exchange two folders.
    const fs::path old = stage_.string() + ".old";
    if (::rename(target_.c_str(), old.c_str()) != 0) {
        fail("cannot replace", target_, lastError());
    }
    if (::rename(stage_.c_str(), target_.c_str()) != 0) {
        const std::error_code error = lastError();
        ::rename(old.c_str(), target_.c_str());
        fail("cannot replace", target_, error);
    }
    stage_ = old;
}

} // namespace vemo::tool
