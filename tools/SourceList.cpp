#include "SourceList.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <system_error>

#include <QByteArray>
#include <QStringDecoder>

#include "PathText.h"
#include "System.h"
#include "ToolError.h"

namespace vemo::tool {

namespace fs = std::filesystem;

namespace {

// The library's prune knows effects by this ending; an id without it would never leave memory.
constexpr std::string_view ID_ENDING = ".sfx";

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool looksLikeAudio(const fs::path& file) {
    static const std::set<std::string> ENDINGS{".aif", ".aifc", ".aiff", ".au",   ".caf",  ".flac",
                                               ".mp3", ".oga",  ".ogg",  ".opus", ".rf64", ".snd",
                                               ".voc", ".w64",  ".wav",  ".wave"};
    if (ENDINGS.contains(lower(Utf8FromPath(file.extension())))) {
        return true;
    }
    std::array<char, 12> head{};
    std::ifstream(file, std::ios::binary).read(head.data(), head.size());
    const std::string_view text(head.data(), head.size());
    return text.starts_with("OggS") || text.starts_with("fLaC") ||
           (text.starts_with("RIFF") && text.substr(8) == "WAVE") ||
           (text.starts_with("FORM") && text.substr(8, 3) == "AIF");
}

void addFolder(const fs::path& folder, SourceList& list) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        std::error_code gone;
        if (at->is_regular_file(gone) && !Utf8FromPath(at->path().filename()).starts_with('.')) {
            files.push_back(at->path());
        }
    }
    if (error) {
        throw ToolError(ExitCode::Refused,
                        pathText(folder) + ": cannot be read: " + reasonText(error));
    }
    std::sort(files.begin(), files.end());
    const std::size_t before = list.sources.size();
    for (fs::path& file : files) {
        if (looksLikeAudio(file)) {
            list.sources.push_back({std::move(file), {}});
        } else {
            list.leftOut.push_back(std::move(file));
        }
    }
    if (list.sources.size() == before) {
        throw ToolError(ExitCode::Usage, pathText(folder) + ": holds no audio file");
    }
}

std::string displayName(const std::string& stem) {
    std::string name;
    for (const char c : stem) {
        if (c != '-' && c != '_' && c != ' ') {
            name += c;
        } else if (!name.empty() && name.back() != ' ') {
            name += ' ';
        }
    }
    if (name.ends_with(' ')) {
        name.pop_back();
    }
    if (!name.empty()) {
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    }
    return name.empty() ? stem : name;
}

bool isUtf8(const std::string& text) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(QByteArray::fromStdString(text));
    return !decoder.hasError() && !decoded.isNull();
}

/// An id is also the effect's file name, on every system that the install may go to.
void checkId(const Source& source) {
    const std::string& id = source.entry.id;
    const auto forbidden = [](unsigned char c) {
        return c < 0x20 || c == 0x7F ||
               std::string_view("/\\:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos;
    };
    if (id.size() == ID_ENDING.size() || id.starts_with('.') || !isUtf8(id) ||
        !isUtf8(source.entry.name) || std::any_of(id.begin(), id.end(), forbidden)) {
        throw ToolError(ExitCode::Refused,
                        pathText(source.file) + ": '" + id +
                            "' cannot be an effect id; give it another with --names");
    }
}

void nameSources(std::vector<Source>& sources, const NamesTable& names, const std::string& label) {
    std::set<std::string> used;
    for (Source& source : sources) {
        const std::string stem = Utf8FromPath(source.file.stem());
        std::string id = stem;
        source.entry.name = displayName(stem);
        const auto row = names.find(Utf8FromPath(source.file.filename()));
        if (row != names.end()) {
            used.insert(row->first);
            id = row->second.id.empty() ? id : row->second.id;
            source.entry.name = row->second.name.empty() ? source.entry.name : row->second.name;
        }
        source.entry.id = id;
        if (!id.ends_with(ID_ENDING)) {
            source.entry.id += ID_ENDING;
        }
        source.entry.path = source.entry.id;
        checkId(source);
    }
    for (const auto& [file, row] : names) {
        if (!used.contains(file)) {
            std::string line = label + ":" + std::to_string(row.line);
            line += ": no source is called '" + file + "'";
            throw ToolError(ExitCode::Usage, line);
        }
    }
}

void markAmbient(std::vector<Source>& sources, const std::vector<std::string>& patterns) {
    for (const std::string& pattern : patterns) {
        const auto fits = [&pattern](const std::string& text) { return fitsGlob(pattern, text); };
        bool found = false;
        for (Source& source : sources) {
            if (fits(Utf8FromPath(source.file.filename())) || fits(source.entry.id)) {
                source.entry.ambient = found = true;
            }
        }
        if (!found) {
            throw ToolError(ExitCode::Usage, "--ambient '" + pattern + "' fits no source");
        }
    }
}

void refuseDuplicates(const std::vector<Source>& sources) {
    // File names that differ only in case are one file on Windows.
    std::map<std::string, const Source*> byId;
    for (const Source& source : sources) {
        const auto [first, isNew] = byId.try_emplace(lower(source.entry.id), &source);
        if (!isNew) {
            throw ToolError(ExitCode::Refused, "two sources give the id '" + source.entry.id +
                                                   "': " + pathText(first->second->file) + " and " +
                                                   pathText(source.file));
        }
    }
}

} // namespace

SourceList collectSources(const std::vector<std::string>& arguments,
                          const std::vector<std::string>& ambient, const NamesTable& names,
                          const std::string& namesLabel) {
    SourceList list;
    for (const std::string& argument : arguments) {
        std::error_code error;
        const fs::path path = PathFromUtf8(argument);
        const fs::file_status status = fs::status(path, error);
        if (fs::is_directory(status)) {
            addFolder(path, list);
        } else if (fs::exists(status)) {
            list.sources.push_back({path, {}});
        } else {
            throw ToolError(ExitCode::Refused, argument + ": does not exist");
        }
    }
    nameSources(list.sources, names, namesLabel);
    markAmbient(list.sources, ambient);
    refuseDuplicates(list.sources);
    return list;
}

} // namespace vemo::tool
