#pragma once

#include <filesystem>
#include <istream>
#include <map>
#include <string>

namespace vemo::tool {

/// One line of a names file. An empty id or name leaves the default.
struct NamesRow {
    std::string id;
    std::string name;
    int line = 0;
};

/// Rows by source file name.
using NamesTable = std::map<std::string, NamesRow>;

/// Reads lines `file,id,name`. Fields may stand in double quotes, a quote in them is doubled; a
/// first line that reads `file,id,name` and empty lines are passed over. `label` names the text in
/// errors. ToolError (Usage) that names the line.
NamesTable readNames(std::istream& in, const std::string& label);

/// The same from a file; ToolError (Usage) when it cannot be read.
NamesTable readNames(const std::filesystem::path& file);

} // namespace vemo::tool
