#include "StagedFolder.h"

#include <system_error>

#include "DiskFolder.h"

namespace vemo::tool {

namespace fs = std::filesystem;

StagedFolder::StagedFolder(const fs::path& target) {
    std::error_code error;
    target_ = fs::weakly_canonical(fs::absolute(target), error);
    if (error) {
        failAt("cannot use", target, error);
    }
    if (!target_.has_filename()) {
        target_ = target_.parent_path();
    }
    makeParents_();
    fs::path name = ".";
    name += target_.filename();
    name += ".";
    std::error_code reason;
    stage_ = makeFolder(target_.parent_path() / name, reason);
    if (reason) {
        for (const fs::path& parent : madeParents_) {
            fs::remove(parent, error);
        }
        failAt("cannot write in", target_.parent_path(), reason);
    }
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
    if (!fs::exists(target_.root_path())) { // a drive that is not there has no parent that is
        failAt("cannot make", target_, std::make_error_code(std::errc::no_such_file_or_directory));
    }
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
        failAt("cannot make", target_.parent_path(), error);
    }
    madeParents_ = std::move(missing);
}

void StagedFolder::write(const std::string& name, const unsigned char* bytes, std::size_t size) {
    writeNewFile(stage_ / PathFromUtf8(name), bytes, size);
}

void StagedFolder::commit() {
    syncFolder(stage_);
    if (const std::error_code error = moveFolder(stage_, target_)) {
        if (error != std::errc::directory_not_empty && error != std::errc::file_exists) {
            failAt("cannot put in place", target_, error);
        }
        replace_();
    }
    committed_ = true;
    syncFolder(target_.parent_path());
}

void StagedFolder::replace_() {
    if (exchangeFolders(stage_, target_)) {
        return;
    }
    // Not every file system can exchange two folders.
    fs::path old = stage_;
    old += ".old";
    if (const std::error_code error = moveFolder(target_, old)) {
        failAt("cannot replace", target_, error);
    }
    if (const std::error_code error = moveFolder(stage_, target_)) {
        moveFolder(old, target_);
        failAt("cannot replace", target_, error);
    }
    stage_ = old;
}

} // namespace vemo::tool
