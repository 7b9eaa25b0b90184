#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QTemporaryDir>

/// An install folder of its own for as long as it lives, holding just the bytes a test writes into
/// it, faults included. Its name is not ASCII.
class BareInstall {
public:
    BareInstall() {
#ifdef _WIN32
        // The platform's folder cannot be moved there, so test programs take turns, and an
        // installed catalogue is never touched.
        turn_.lock();
        const QString root =
            QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation).at(1);
#else
        const QString root = temporary_.path();
        qputenv("XDG_DATA_DIRS", root.toUtf8());
#endif
        folder_ = std::filesystem::path(root.toStdU16String()) / "vemo_data";
        if (std::filesystem::exists(folder_)) {
            throw std::runtime_error("An install folder is there already");
        }
        std::filesystem::create_directories(folder_ / "sfx");
    }
    ~BareInstall() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    BareInstall(const BareInstall&) = delete;
    BareInstall& operator=(const BareInstall&) = delete;

    std::filesystem::path Path(const std::u8string& file) const {
        return folder_ / "sfx" / file;
    }

    /// Path of a file as the catalogue tells it.
    std::string Text(const std::string& file) const {
        const std::u8string folder = (folder_.parent_path() / "vemo_data/sfx").u8string();
        return std::string(folder.begin(), folder.end()) + "/" + file;
    }

    void Write(const std::u8string& file, const std::string& content = "sound") const {
        std::filesystem::create_directories(Path(file).parent_path());
        std::ofstream(Path(file), std::ios::binary) << content;
    }
    void WriteManifest(const std::string& json) const {
        Write(u8"manifest.json", json);
    }

private:
#ifdef _WIN32
    QLockFile turn_{QDir::tempPath() + "/sfx-install-folder.lock"};
#else
    QTemporaryDir temporary_{QDir::tempPath() + QString::fromUtf8("/sfx-Bühne-♪-XXXXXX")};
#endif
    std::filesystem::path folder_;
};
