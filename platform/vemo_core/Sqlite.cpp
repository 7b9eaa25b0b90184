#include "Sqlite.h"

#include <limits>
#include <new>
#include <system_error>

namespace CL::sqlite {

namespace {

std::string Reason(int code) {
    if (code == SQLITE_READONLY_DIRECTORY) {
        return "its folder cannot be written";
    }
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "it is open in another program";
    case SQLITE_NOTADB:
        return "it is no show file";
    case SQLITE_CORRUPT:
        return "it is damaged";
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_READONLY:
        return "it cannot be written";
    case SQLITE_CANTOPEN:
        return "it cannot be opened";
    case SQLITE_TOOBIG:
        return "a text is too long for it";
    default:
        return std::string("reading or writing it failed: ") + sqlite3_errstr(code);
    }
}

} // namespace

Error::Error(int code) : Error(code, Reason(code)) {}

Error::Error(int code, const std::string& reason)
    : std::runtime_error(reason), code_(code & 0xFF) {}

Database::Database(const std::string& absolutePath) {
    const int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int code = sqlite3_open_v2(absolutePath.c_str(), &handle_, flags, nullptr);
    if (code != SQLITE_OK) {
        const int systemError = handle_ == nullptr ? 0 : sqlite3_system_errno(handle_);
        sqlite3_close(handle_);
        if (systemError == 0) {
            throw Error(code);
        }
        throw Error(code, "it cannot be opened: " + std::system_category().message(systemError));
    }
}

Database::~Database() {
    sqlite3_close(handle_);
}

void Database::Throw(int code) const {
    if ((code & 0xFF) == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    throw Error(code);
}

bool Database::ReadOnly() const {
    return sqlite3_db_readonly(handle_, "main") != 0;
}

bool Database::Moved() const {
    int moved = 0; // left alone by systems on which an open file cannot be moved
    sqlite3_file_control(handle_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

// Through SQLite's own handle: to close another one of the same file would give up the locks that
// this process has on it.
sqlite3_file* Database::File() const {
    sqlite3_file* file = nullptr;
    const int code = sqlite3_file_control(handle_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (code != SQLITE_OK) {
        Throw(code);
    }
    return file;
}

std::string Database::Head(int size) const {
    sqlite3_file* file = File();
    std::string head(static_cast<std::size_t>(size), '\0');
    const int code = file->pMethods->xRead(file, head.data(), size, 0);
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) {
        Throw(code);
    }
    return head;
}

void Database::Configure(int option, bool on) const {
    sqlite3_db_config(handle_, option, on ? 1 : 0, nullptr);
}

Statement::Statement(const Database& database, const char* sql) : database_(database) {
    const int code = sqlite3_prepare_v3(database.Handle(), sql, -1, SQLITE_PREPARE_PERSISTENT,
                                        &statement_, nullptr);
    if (code == SQLITE_ERROR) {
        // The statements are right: it is the tables that are not there, or are others.
        throw Error(SQLITE_CORRUPT,
                    std::string("it is damaged: ") + sqlite3_errmsg(database.Handle()));
    }
    if (code != SQLITE_OK) {
        database.Throw(code);
    }
}

Statement::~Statement() {
    sqlite3_finalize(statement_);
}

Statement::Finish::~Finish() {
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        database_.Throw(code);
    }
    return code == SQLITE_ROW;
}

std::int64_t Statement::Integer(int column, std::int64_t low, std::int64_t high) const {
    const std::int64_t value = sqlite3_column_int64(statement_, column);
    if (sqlite3_column_type(statement_, column) != SQLITE_INTEGER || value < low || value > high) {
        throw Error(SQLITE_CORRUPT, std::string("it is damaged: a wrong value of ") +
                                        sqlite3_column_name(statement_, column));
    }
    return value;
}

std::string Statement::Bytes(int column) const {
    if (sqlite3_column_type(statement_, column) != SQLITE_BLOB) {
        throw Error(SQLITE_CORRUPT, std::string("it is damaged: a wrong value of ") +
                                        sqlite3_column_name(statement_, column));
    }
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    const int size = sqlite3_column_bytes(statement_, column);
    return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(size));
}

std::string Statement::Text(int column) const {
    const unsigned char* text = sqlite3_column_text(statement_, column);
    return text == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(text));
}

void Statement::Bind(int index, std::int64_t value) {
    const int code = sqlite3_bind_int64(statement_, index, value);
    if (code != SQLITE_OK) {
        database_.Throw(code);
    }
}

void Statement::Bind(int index, const std::string& bytes) {
    const int code =
        sqlite3_bind_blob64(statement_, index, bytes.data(), bytes.size(), SQLITE_STATIC);
    if (code != SQLITE_OK) {
        database_.Throw(code);
    }
}

void Run(const Database& database, const char* sql) {
    Statement(database, sql).Run();
}

std::int64_t Number(const Database& database, const char* sql) {
    Statement statement(database, sql);
    return statement.Step() ? statement.Integer(0, std::numeric_limits<std::int64_t>::min(),
                                                std::numeric_limits<std::int64_t>::max())
                            : 0;
}

std::string Text(const Database& database, const char* sql) {
    Statement statement(database, sql);
    return statement.Step() ? statement.Text(0) : std::string();
}

} // namespace CL::sqlite
