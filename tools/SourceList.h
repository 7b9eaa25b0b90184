#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ManifestText.h"
#include "NamesTable.h"

namespace vemo::tool {

/// A file to pack and what it becomes.
struct Source {
    std::filesystem::path file;
    ManifestEntry entry;
};

struct SourceList {
    std::vector<Source> sources;
    /// Files of source folders that are no audio files.
    std::vector<std::filesystem::path> leftOut;
};

/// Collects the files named, and the audio files of folders in the order of their names, and gives
/// each its id ("door-bell.wav" -> "door-bell.sfx") and display name ("Door bell"), or those of
/// `names`. What matches one of the globs in `ambient` by file name or id is ambient.
///
/// ToolError when a source does not exist or a folder holds no audio, when a glob or a row of
/// `names` fits no source (Usage), and when an id cannot be a file name or comes twice (Refused).
SourceList collectSources(const std::vector<std::string>& arguments,
                          const std::vector<std::string>& ambient, const NamesTable& names,
                          const std::string& namesLabel);

} // namespace vemo::tool
