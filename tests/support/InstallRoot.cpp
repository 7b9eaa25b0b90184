#include "InstallRoot.h"

#include <fstream>
#include <stdexcept>
#include <system_error>

#include <QStandardPaths>

#ifdef _WIN32
#include <windows.h>
#endif

namespace sfx_test {

namespace fs = std::filesystem;

#ifdef _WIN32

InstallRoot::InstallRoot() {
    const std::wstring file = (QDir::tempPath() + "/sfx-install-folder.lock").toStdWString();
    const auto open = [&] {
        return CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    while ((turn_ = open()) == INVALID_HANDLE_VALUE) {
        if (GetLastError() != ERROR_SHARING_VIOLATION) {
            throw std::runtime_error("no lock for the install folder");
        }
        Sleep(5);
    }
    const QString root =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation).at(1);
    install_ = fs::path(root.toStdU16String()) / "vemo_data" / "sfx";
    // A test that was killed leaves its folder behind.
    const fs::path mark = install_.parent_path() / "made-by-a-test";
    if (fs::exists(mark)) {
        fs::remove_all(install_.parent_path());
    }
    if (fs::exists(install_)) {
        throw std::runtime_error("an install folder is there already: " + install_.string());
    }
    fs::create_directories(install_.parent_path());
    std::ofstream{mark};
    fs::create_directory(install_);
}

InstallRoot::~InstallRoot() {
    std::error_code ignored;
    fs::remove_all(install_.parent_path(), ignored);
    CloseHandle(turn_);
}

void InstallRoot::Publish() {}

#else

namespace {

constexpr const char* kDataDirs = "XDG_DATA_DIRS";

} // namespace

InstallRoot::InstallRoot() : install_(fs::path(root_.path().toStdString()) / "vemo_data" / "sfx") {
    if (!root_.isValid()) {
        throw std::runtime_error("no temporary folder: " + root_.errorString().toStdString());
    }
    fs::create_directories(install_);
}

InstallRoot::~InstallRoot() {
    if (!published_) {
        return;
    }
    if (savedDataDirs_.isNull()) {
        qunsetenv(kDataDirs);
    } else {
        qputenv(kDataDirs, savedDataDirs_);
    }
}

void InstallRoot::Publish() {
    if (!published_) {
        savedDataDirs_ = qgetenv(kDataDirs);
        published_ = true;
        qputenv(kDataDirs,
                root_.path().toUtf8() + ':' +
                    (savedDataDirs_.isEmpty() ? "/usr/local/share:/usr/share" : savedDataDirs_));
    }
}

#endif

} // namespace sfx_test
