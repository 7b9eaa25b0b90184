#include "ShowFile.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <system_error>
#include <utility>

namespace CL {

namespace {

namespace fs = std::filesystem;

ShowFileError Refusal(const std::string& path, const std::string& reason) {
    return ShowFileError(std::string("Show file \"") + path.c_str() + "\": " + reason);
}

fs::path AbsolutePath(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        throw sqlite::Error(SQLITE_CANTOPEN, "it is no path of a file");
    }
    return fs::absolute(PathFromUtf8(path));
}

std::int64_t Bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

template <typename Integer>
Integer Read(const sqlite::Statement& row, int column) {
    using Limits = std::numeric_limits<Integer>;
    return static_cast<Integer>(row.Integer(column, Limits::min(), Limits::max()));
}

float ReadFloat(const sqlite::Statement& row, int column) {
    return std::bit_cast<float>(Read<std::uint32_t>(row, column));
}

Sfx ReadEvent(const sqlite::Statement& row) {
    SfxProperties properties;
    properties.setEffectId(row.Bytes(2));
    properties.setEffectIdIndex(Read<int>(row, 3));
    properties.setName(row.Bytes(4));
    properties.setVolume(ReadFloat(row, 5));
    properties.setPan(ReadFloat(row, 6));
    properties.setReverb(ReadFloat(row, 7));
    properties.setFadeIn(Read<std::uint16_t>(row, 8));
    properties.setFadeOut(Read<std::uint16_t>(row, 9));
    properties.setOutputPath(row.Bytes(10));
    properties.setRepeats(Read<int>(row, 11));
    const std::int64_t number = row.Integer(0, 1, std::numeric_limits<unsigned int>::max());
    return {static_cast<unsigned int>(number), row.Bytes(1), std::move(properties)};
}

// Nobody looks at a content that is read only in part.
void ReadContent(const sqlite::Database& database, LogContent& content) {
    sqlite::Statement events(database,
                             "SELECT number, event_id, effect_id, effect_id_index, name, volume, "
                             "pan, reverb, fade_in, fade_out, output_path, repeats "
                             "FROM sfx_event ORDER BY number");
    while (events.Step()) {
        content.events.push_back(ReadEvent(events));
        content.lastNumber = content.events.back().Number();
    }
    sqlite::Statement number(database, "SELECT seq FROM sqlite_sequence WHERE name = 'sfx_event'");
    if (number.Step()) {
        content.lastNumber = std::max(content.lastNumber, Read<unsigned int>(number, 0));
    }
    sqlite::Statement suffix(database, "SELECT next FROM sfx_suffix");
    if (!suffix.Step()) {
        throw sqlite::Error(SQLITE_CORRUPT, "it is damaged: sfx_suffix is empty");
    }
    content.nextSuffix = static_cast<std::uint64_t>(Read<std::int64_t>(suffix, 0));
}

} // namespace

std::unique_ptr<ShowFile> ShowFile::Open(const std::string& path, LogContent& content) {
    try {
        return std::make_unique<ShowFile>(AbsolutePath(path), content);
    } catch (const sqlite::Error& error) {
        throw Refusal(path, error.what());
    } catch (const std::system_error& error) {
        throw Refusal(path, error.code().message());
    }
}

ShowFile::ShowFile(const fs::path& absolutePath, LogContent& content)
    : path_(Utf8FromPath(absolutePath)),
      database_(absolutePath),
      begin_(database_.Get(), "BEGIN IMMEDIATE"),
      commit_(database_.Get(), "COMMIT"),
      add_(database_.Get(), "INSERT INTO sfx_event (number, event_id, effect_id, effect_id_index, "
                            "name, volume, pan, reverb, fade_in, fade_out, output_path, repeats) "
                            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      edit_(database_.Get(), "UPDATE sfx_event SET effect_id = ?, effect_id_index = ?, name = ?, "
                             "volume = ?, pan = ?, reverb = ?, fade_in = ?, fade_out = ?, "
                             "output_path = ?, repeats = ? WHERE number = ?"),
      delete_(database_.Get(), "DELETE FROM sfx_event WHERE number = ?"),
      setNextSuffix_(database_.Get(), "UPDATE sfx_suffix SET next = ?"),
      turnSuffix_(database_.Get(), "UPDATE sfx_suffix SET next = ~next") {
    ReadContent(database_.Get(), content);
    database_.Accept();
}

bool ShowFile::IsAt(const std::string& path) const {
    std::error_code error;
    return fs::equivalent(PathFromUtf8(path_), PathFromUtf8(path), error) &&
           !database_.Get().Moved();
}

template <typename Change>
void ShowFile::Transact(const Change& change) {
    try {
        if (database_.Get().Moved()) {
            throw sqlite::Error(SQLITE_CANTOPEN, "it was moved or deleted while it is open");
        }
        begin_.Run();
        try {
            change();
            commit_.Run();
        } catch (...) {
            TakeBack();
            throw;
        }
    } catch (const sqlite::Error& error) {
        throw Refusal(path_, error.what());
    }
}

void ShowFile::TakeBack() {
    RollBack();
    try {
        // An edit that was written, but failed to reach the disk, still stands in the log behind
        // its end, and would be back after a crash. One that changes nothing takes its place, reach
        // the disk or not. SQLite writes no page that is told to stay as it is, so: there and back.
        begin_.Run();
        turnSuffix_.Run();
        turnSuffix_.Run();
        commit_.Run();
    } catch (...) {
        RollBack(); // the edit's own failure is the one to tell
    }
}

void ShowFile::RollBack() {
    // Fails where SQLite has done so itself, as after the graver failures.
    sqlite3_exec(database_.Get().Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void ShowFile::Add(const Sfx& event, std::uint64_t nextSuffix) {
    const SfxProperties& sfx = event.sfx_properties();
    Transact([&] {
        add_.Run(event.Number(), event.EventId(), sfx.effectId(), sfx.effectIdIndex(), sfx.name(),
                 Bits(sfx.volume()), Bits(sfx.pan()), Bits(sfx.reverb()), sfx.fadeIn(),
                 sfx.fadeOut(), sfx.outputPath(), sfx.repeats());
        setNextSuffix_.Run(static_cast<std::int64_t>(nextSuffix));
    });
}

void ShowFile::Edit(unsigned int number, const SfxProperties& sfx) {
    Transact([&] {
        edit_.Run(sfx.effectId(), sfx.effectIdIndex(), sfx.name(), Bits(sfx.volume()),
                  Bits(sfx.pan()), Bits(sfx.reverb()), sfx.fadeIn(), sfx.fadeOut(),
                  sfx.outputPath(), sfx.repeats(), number);
    });
}

void ShowFile::Delete(unsigned int number) {
    Transact([&] { delete_.Run(number); });
}

void ShowFile::SetNextSuffix(std::uint64_t nextSuffix) {
    Transact([&] { setNextSuffix_.Run(static_cast<std::int64_t>(nextSuffix)); });
}

} // namespace CL
