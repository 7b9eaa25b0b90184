#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>

#include <vemo_core/ChangeLog.h>

#include "ShowDatabase.h"
#include "Sqlite.h"

namespace CL {

/// What a change log holds.
struct LogContent {
    std::list<Sfx> events;
    unsigned int lastNumber = 0;
    std::uint64_t nextSuffix = 1;
};

/// An open show file. Every edit is one transaction, on disk when it returns; one that throws
/// ShowFileError has changed nothing. One thread at a time.
class ShowFile {
public:
    /// `path` is UTF-8; what the show holds goes into `content`. Throws ShowFileError.
    static std::unique_ptr<ShowFile> Open(const std::string& path, LogContent& content);

    /// Throws sqlite::Error.
    ShowFile(const std::filesystem::path& absolutePath, LogContent& content);

    /// UTF-8, absolute.
    const std::string& Path() const { return path_; }
    /// The path leads to this very file.
    bool IsAt(const std::string& path) const;

    void Add(const Sfx& event, std::uint64_t nextSuffix);
    void Edit(unsigned int number, const SfxProperties& properties);
    void Delete(unsigned int number);
    void SetNextSuffix(std::uint64_t nextSuffix);

private:
    template <typename Change>
    void Transact(const Change& change);
    void TakeBack();
    void RollBack();

    std::string path_;
    ShowDatabase database_;
    sqlite::Statement begin_;
    sqlite::Statement commit_;
    sqlite::Statement add_;
    sqlite::Statement edit_;
    sqlite::Statement delete_;
    sqlite::Statement setNextSuffix_;
    sqlite::Statement turnSuffix_;
};

} // namespace CL
