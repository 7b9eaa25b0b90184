#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include <sqlite3.h>

/// As much of SQLite as a show file takes. One thread at a time.
namespace CL::sqlite {

/// what() is a reason in plain words, without the file's name.
class Error : public std::runtime_error {
public:
    /// `code` may be an extended one.
    explicit Error(int code);
    Error(int code, const std::string& reason);

    /// The primary result code.
    int Code() const { return code_; }

private:
    int code_;
};

class Database {
public:
    /// Opens for reading and writing and makes an empty file where there is none. Reads nothing
    /// of the file that would take a lock.
    explicit Database(const std::string& absolutePath);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* Handle() const { return handle_; }
    bool ReadOnly() const;
    /// The file now has another name, or none.
    bool Moved() const;
    /// The first bytes of the file as they are on disk; what lies behind its end reads as 0.
    std::string Head(int size) const;
    void Configure(int option, bool on) const;
    [[noreturn]] void Throw(int code) const;

private:
    sqlite3_file* File() const;

    sqlite3* handle_ = nullptr;
};

class Statement {
public:
    Statement(const Database& database, const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Runs to its end with these parameters, integers or bytes. The bytes are not copied.
    template <typename... Values>
    void Run(const Values&... values) {
        const Finish finish{statement_};
        int index = 0;
        (Bind(++index, values), ...);
        while (Step()) {
        }
    }

    /// Goes on to the next row; false at the end.
    bool Step();
    /// A value of the row. Another type, or a value out of range, is damage.
    std::int64_t Integer(int column, std::int64_t low, std::int64_t high) const;
    std::string Bytes(int column) const;
    std::string Text(int column) const;

private:
    // Ends what the statement holds, after a failure too: an open one would keep its transaction.
    struct Finish {
        ~Finish();
        sqlite3_stmt* statement;
    };

    void Bind(int index, std::int64_t value);
    void Bind(int index, const std::string& bytes);

    const Database& database_;
    sqlite3_stmt* statement_ = nullptr;
};

/// Runs one statement without parameters.
void Run(const Database& database, const char* sql);
/// The first value of the answer.
std::int64_t Number(const Database& database, const char* sql);
std::string Text(const Database& database, const char* sql);

} // namespace CL::sqlite
