#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <vemo_core/ActiveChangeLogExclusive.h>
#include <vemo_core/ChangeLog.h>

/// A folder for show files, and the active change log empty in memory before and after. Its name
/// is not ASCII.
class ShowHouse {
public:
    ShowHouse() {
        CL::CloseShow();
        std::filesystem::create_directories(folder_);
    }
    ~ShowHouse() {
        CL::CloseShow();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    ShowHouse(const ShowHouse&) = delete;
    ShowHouse& operator=(const ShowHouse&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }
    /// UTF-8.
    std::string Path(const std::string& file) const {
        const std::u8string text = (folder_ / file).u8string();
        return {text.begin(), text.end()};
    }
    void Write(const std::string& file, const std::string& bytes) const {
        std::ofstream(folder_ / file, std::ios::binary) << bytes;
    }
    std::string Read(const std::string& file) const {
        std::ifstream stream(folder_ / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// Name and bytes of all there is; of a folder only the name.
    std::map<std::string, std::string> All() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            const std::string name = entry.path().filename().string();
            all[name] = entry.is_regular_file() ? Read(name) : "";
        }
        return all;
    }

private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / (u8"Bühne-♪-" + Unique());

    static std::u8string Unique() {
        const std::string number = std::to_string(std::random_device()());
        return {number.begin(), number.end()};
    }
};

inline CL::SfxProperties Named(const std::string& name) {
    CL::SfxProperties properties;
    properties.setName(name);
    return properties;
}

inline void Add(const std::string& eventId, const std::string& name = "") {
    CL::Editor().AddSoundEffect(CL::Sfx(0, eventId, Named(name)));
}

inline std::vector<CL::Sfx> Events() {
    const ActiveChangeLogExclusive exclusive;
    const auto& events = exclusive.Get().SoundEffects();
    return {events.begin(), events.end()};
}

/// "NUMBER ID NAME" of each event.
inline std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    for (const CL::Sfx& event : Events()) {
        lines.push_back(std::to_string(event.Number()) + " " + event.EventId() + " " +
                        event.sfx_properties().name());
    }
    return lines;
}

/// What opening it, or the edit, is refused with; empty when it is not.
template <typename Action>
std::string RefusalOf(Action action) {
    try {
        action();
    } catch (const CL::ShowFileError& error) {
        return error.what();
    }
    return "";
}
