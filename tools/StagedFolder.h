#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vemo::tool {

/// A folder that is written aside and takes its place in one step. Until commit() the target is
/// not touched; without commit() nothing is left behind.
///
/// Every operation throws ToolError (Refused) that names the file and the reason.
class StagedFolder {
public:
    explicit StagedFolder(const std::filesystem::path& target);
    ~StagedFolder();

    StagedFolder(const StagedFolder&) = delete;
    StagedFolder& operator=(const StagedFolder&) = delete;

    /// Writes one file through to the disk.
    void write(const std::string& name, const unsigned char* bytes, std::size_t size);
    /// Moves the folder to its place; what stood there is removed afterwards.
    void commit();

private:
    void makeParents_();
    void replace_();

    std::filesystem::path target_;
    std::filesystem::path stage_;
    std::vector<std::filesystem::path> madeParents_;
    bool committed_ = false;
};

} // namespace vemo::tool
