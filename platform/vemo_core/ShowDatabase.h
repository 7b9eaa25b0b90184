#pragma once

#include <filesystem>
#include <memory>

#include "Sqlite.h"

namespace CL {

/// A path in UTF-8, as everywhere outside this library.
std::filesystem::path PathFromUtf8(const std::string& path);
std::string Utf8FromPath(const std::filesystem::path& path);

/// The SQLite database of a show, locked against other programs. Opening it changes no byte of a
/// file that is there already.
class ShowDatabase {
public:
    /// Opens a show, or makes one where there is no file or an empty one. Throws sqlite::Error.
    explicit ShowDatabase(const std::filesystem::path& absolutePath);

    const sqlite::Database& Get() const { return *database_; }
    /// Makes it ready for edits, when all of it has been read and found good. A new show that does
    /// not come so far is taken away again.
    void Accept();

private:
    // Leaves no half of a show behind.
    class Leftovers {
    public:
        explicit Leftovers(const std::filesystem::path& path);
        ~Leftovers();
        Leftovers(const Leftovers&) = delete;
        Leftovers& operator=(const Leftovers&) = delete;

        /// All that is in the file is ours.
        void Claim() { claimed_ = true; }
        void Keep() { claimed_ = false; }

    private:
        std::filesystem::path path_;
        bool absent_;
        bool claimed_ = false;
    };

    void Lock(const std::filesystem::path& path);
    void Create() const;
    void Check() const;

    Leftovers leftovers_; // cleared away after the database is closed
    std::unique_ptr<sqlite::Database> database_;
};

} // namespace CL
