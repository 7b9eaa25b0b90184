#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <QDir>
#include <QTemporaryDir>

#include <sfx/catalogue/AssetManager.h>
#include <sfx/model/BadFileException.h>

/// A folder with a schema, a description and, below "base", the files of assets. Its name is not
/// ASCII.
class AssetFolder {
public:
    AssetFolder() { std::filesystem::create_directory(Path(u8"base")); }

    std::filesystem::path Path(const std::u8string& file) const { return root_ / file; }
    /// UTF-8.
    std::string Text(const std::filesystem::path& file) const {
        const std::u8string text = (root_ / file).u8string();
        return {text.begin(), text.end()};
    }
    /// What the manager says to a file below the base folder that it cannot read.
    std::string Unreadable(const std::u8string& file) const {
        return "Unable to read file " + Text(std::filesystem::path("base") / file);
    }
    void Write(const std::u8string& file, const std::string& content = "sound") const {
        std::filesystem::create_directories(Path(file).parent_path());
        std::ofstream(Path(file), std::ios::binary) << content;
    }

    vemo::AssetManager Load() const {
        return {Text(u8"schema.json"), Text(u8"assets.json"), Text(u8"base")};
    }
    vemo::AssetManager Load(const std::string& description,
                            const std::string& schema = "{}") const {
        Write(u8"schema.json", schema);
        Write(u8"assets.json", description);
        return Load();
    }
    /// What the manager says to them; empty if it loads.
    template <typename... Contents>
    std::string Fault(const Contents&... contents) const {
        try {
            Load(contents...);
            return {};
        } catch (const vemo::BadFileException& error) {
            return error.what();
        }
    }

private:
    QTemporaryDir temporary_{QDir::tempPath() + QString::fromUtf8("/sfx-Bühne-♪-XXXXXX")};
    std::filesystem::path root_{temporary_.path().toStdU16String()};
};

inline std::string Described(const std::string& assets, const std::string& version = "1.0") {
    return R"({"filetype": "vemo_assets", "version": ")" + version + R"(", "assets": [)" + assets +
           "]}";
}

/// `filename` as JSON writes it.
inline std::string OneAsset(const std::string& id, const std::string& filename) {
    return R"({"type": "image", "id": ")" + id + R"(", "group": "g", "name": "n", "filename": ")" +
           filename + R"("})";
}
