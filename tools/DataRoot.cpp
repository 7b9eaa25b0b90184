#include "DataRoot.h"

#include <fstream>
#include <system_error>

#include "ManifestText.h"
#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

DataRoot::DataRoot() : before_(qgetenv("XDG_DATA_DIRS")) {
    std::error_code error;
    fs::create_directories(link(), error);
    std::ofstream(link() / "manifest.json") << writeManifest({});
    publish_(fs::is_regular_file(link() / "manifest.json", error));
}

DataRoot::DataRoot(const fs::path& install) : before_(qgetenv("XDG_DATA_DIRS")) {
    std::error_code error;
    fs::create_directories(link().parent_path(), error);
    if (!error) {
        fs::create_directory_symlink(install, link(), error);
    }
    publish_(!error);
}

DataRoot::~DataRoot() {
    if (before_.isNull()) {
        qunsetenv("XDG_DATA_DIRS");
    } else {
        qputenv("XDG_DATA_DIRS", before_);
    }
}

fs::path DataRoot::belowRoot() {
    return fs::path("vemo_data") / "sfx";
}

fs::path DataRoot::link() const {
    return root_.path().toStdString() / belowRoot();
}

void DataRoot::publish_(bool made) const {
    if (!root_.isValid() || !made) {
        throw ToolError(ExitCode::NoInstall, "cannot write in the folder for temporary files, " +
                                                 root_.path().toStdString());
    }
    qputenv("XDG_DATA_DIRS", root_.path().toUtf8() + (before_.isEmpty() ? "" : ":" + before_));
}

} // namespace vemo::tool
