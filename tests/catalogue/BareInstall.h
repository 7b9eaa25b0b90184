#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "support/InstallRoot.h"

/// An install folder of its own for as long as it lives, holding just the bytes a test writes into
/// it, faults included.
class BareInstall {
public:
    BareInstall() { root_.Publish(); }

    std::filesystem::path Path(const std::u8string& file) const { return root_.Install() / file; }

    /// Path of a file as the catalogue tells it.
    std::string Text(const std::string& file) const {
        const std::u8string folder =
            (root_.Install().parent_path().parent_path() / "vemo_data/sfx").u8string();
        return std::string(folder.begin(), folder.end()) + "/" + file;
    }

    void Write(const std::u8string& file, const std::string& content = "sound") const {
        std::filesystem::create_directories(Path(file).parent_path());
        std::ofstream(Path(file), std::ios::binary) << content;
    }
    void WriteManifest(const std::string& json) const { Write(u8"manifest.json", json); }

private:
    sfx_test::InstallRoot root_;
};
