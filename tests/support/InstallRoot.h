#pragma once

#include <filesystem>

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>

namespace sfx_test {

/// A data folder for one test, in which the library looks for its install as soon as Publish() was
/// called, until the object goes away. Its name is not ASCII where the test may choose it.
///
/// On Windows the platform's folder cannot be moved: there test programs take turns, and an
/// installed catalogue is never touched (std::runtime_error).
class InstallRoot {
public:
    /// Throws std::runtime_error when there is no place for it.
    InstallRoot();
    ~InstallRoot();
    InstallRoot(const InstallRoot&) = delete;
    InstallRoot& operator=(const InstallRoot&) = delete;

    /// The folder that holds manifest.json; it exists.
    const std::filesystem::path& Install() const { return install_; }
    void Publish();

private:
#ifdef _WIN32
    /// Open by one process at a time, and closed with it, however it ends.
    void* turn_ = nullptr;
#else
    QTemporaryDir root_{QDir::tempPath() + QString::fromUtf8("/sfx-Bühne-♪-XXXXXX")};
    QByteArray savedDataDirs_;
    bool published_ = false;
#endif
    std::filesystem::path install_;
};

} // namespace sfx_test
