#pragma once

#include <filesystem>
#include <string>

#include <QByteArray>
#include <QTemporaryDir>

namespace vemo::tool {

/// Makes a folder the place where the library looks for its install, while it lives. The library
/// knows only the data folders of the session, so a link stands in for one; that also copes with
/// paths that hold a colon, which XDG_DATA_DIRS cannot.
class DataRoot {
public:
    /// An install without an effect.
    DataRoot();
    /// `install` holds manifest.json. Both throw ToolError (NoInstall) when there is no place for
    /// temporary files.
    explicit DataRoot(const std::filesystem::path& install);
    ~DataRoot();
    DataRoot(const DataRoot&) = delete;
    DataRoot& operator=(const DataRoot&) = delete;

    /// Where an install lies below a data folder.
    static std::filesystem::path belowRoot();
    /// The path under which the library sees the install.
    std::filesystem::path link() const;

private:
    void publish_(bool made) const;

    QTemporaryDir root_;
    QByteArray before_;
};

} // namespace vemo::tool
