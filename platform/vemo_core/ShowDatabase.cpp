#include "ShowDatabase.h"

#include <cstdint>
#include <string>
#include <system_error>

namespace CL {

namespace {

namespace fs = std::filesystem;

// In the header of the file, so that it is known for a show before SQLite touches it: "VEMO".
constexpr std::int64_t kApplicationId = 0x56454D4F;
constexpr std::int64_t kFormat = 1;

constexpr int kHeaderSize = 100;
constexpr std::size_t kFormatAt = 60;
constexpr std::size_t kApplicationIdAt = 68;

constexpr const char* kSchema[] = {
    // AUTOINCREMENT: a deleted event's number is not given again. Texts are bytes, and gains the
    // bits of a float, since SQLite keeps neither every text nor a NaN as it was.
    "CREATE TABLE sfx_event ("
    " number INTEGER PRIMARY KEY AUTOINCREMENT, event_id BLOB NOT NULL,"
    " effect_id BLOB NOT NULL, effect_id_index INTEGER NOT NULL, name BLOB NOT NULL,"
    " volume INTEGER NOT NULL, pan INTEGER NOT NULL, reverb INTEGER NOT NULL,"
    " fade_in INTEGER NOT NULL, fade_out INTEGER NOT NULL, output_path BLOB NOT NULL,"
    " repeats INTEGER NOT NULL) STRICT",
    "CREATE TABLE sfx_suffix (next INTEGER NOT NULL) STRICT",
    "INSERT INTO sfx_suffix VALUES (1)",
};

fs::path Beside(fs::path path, const char* ending) {
    return path += ending;
}

std::int64_t BigEndian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

void CheckMarks(std::int64_t applicationId, std::int64_t format) {
    if (applicationId != kApplicationId) {
        throw sqlite::Error(SQLITE_NOTADB, "it is a database of another program");
    }
    if (format > kFormat) {
        throw sqlite::Error(SQLITE_NOTADB, "it was made by a newer version (format " +
                                               std::to_string(format) + ", known up to " +
                                               std::to_string(kFormat) + ")");
    }
    if (format < 1) {
        throw sqlite::Error(SQLITE_CORRUPT, "it is damaged: format " + std::to_string(format));
    }
}

void CheckHeader(const sqlite::Database& database) {
    const std::string header = database.Head(kHeaderSize);
    if (!header.starts_with(std::string("SQLite format 3\0", 16))) {
        throw sqlite::Error(SQLITE_NOTADB);
    }
    CheckMarks(BigEndian(header, kApplicationIdAt), BigEndian(header, kFormatAt));
}

// What SQLite would not name, or would wait for.
bool IsAbsent(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    switch (status.type()) {
    case fs::file_type::regular:
        return false;
    case fs::file_type::not_found:
        if (!fs::is_directory(path.parent_path(), error)) {
            throw sqlite::Error(SQLITE_CANTOPEN, "its folder does not exist");
        }
        return true;
    case fs::file_type::directory:
        throw sqlite::Error(SQLITE_CANTOPEN, "it is a folder");
    case fs::file_type::none:
        throw sqlite::Error(SQLITE_CANTOPEN, "it cannot be reached: " + error.message());
    default:
        throw sqlite::Error(SQLITE_CANTOPEN, "it is no regular file");
    }
}

bool HasContent(const fs::path& path) {
    std::error_code absent;
    const std::uintmax_t size = fs::file_size(path, absent);
    return !absent && size > 0;
}

} // namespace

fs::path PathFromUtf8(const std::string& path) {
    return std::u8string(path.begin(), path.end());
}

std::string Utf8FromPath(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

ShowDatabase::Leftovers::Leftovers(const fs::path& path) : path_(path), absent_(IsAbsent(path)) {}

ShowDatabase::Leftovers::~Leftovers() {
    if (!claimed_) {
        return;
    }
    std::error_code ignored;
    fs::remove(Beside(path_, "-wal"), ignored);
    fs::remove(Beside(path_, "-journal"), ignored);
    if (absent_) {
        fs::remove(path_, ignored);
    } else {
        fs::resize_file(path_, 0, ignored);
    }
}

ShowDatabase::ShowDatabase(const fs::path& absolutePath) : leftovers_(absolutePath) {
    const bool logLeft = HasContent(Beside(absolutePath, "-wal"));
    database_ = std::make_unique<sqlite::Database>(Utf8FromPath(absolutePath));
    if (database_->ReadOnly()) {
        throw sqlite::Error(SQLITE_READONLY);
    }
    if (fs::file_size(absolutePath) > 0) {
        CheckHeader(*database_);
    }
    // Edits of a killed program wait in the log. They come into the file when it is closed, unless
    // it is refused. A log that is empty is taken away by the close.
    database_->Configure(SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, logLeft);
    // A show may come from anywhere.
    database_->Configure(SQLITE_DBCONFIG_DEFENSIVE, true);
    database_->Configure(SQLITE_DBCONFIG_TRUSTED_SCHEMA, false);
    database_->Configure(SQLITE_DBCONFIG_ENABLE_TRIGGER, false);
    Lock(absolutePath);
    if (fs::file_size(absolutePath) == 0) {
        leftovers_.Claim();
        Create();
    } else {
        Check();
    }
}

// The lock stays until the file is closed.
void ShowDatabase::Lock(const fs::path& path) {
    sqlite::Run(*database_, "PRAGMA locking_mode = EXCLUSIVE");
    try {
        sqlite::Run(*database_, "PRAGMA synchronous = FULL");
        sqlite::Run(*database_, "BEGIN EXCLUSIVE");
    } catch (const sqlite::Error& error) {
        if (error.Code() != SQLITE_BUSY && fs::file_size(path) == 0) {
            leftovers_.Claim();
        }
        throw;
    }
}

// In one transaction of the rollback journal: whatever happens, the file then is empty or a show
// whose header says so.
void ShowDatabase::Create() const {
    for (const char* sql : kSchema) {
        sqlite::Run(*database_, sql);
    }
    const std::string application = "PRAGMA application_id = " + std::to_string(kApplicationId);
    sqlite::Run(*database_, application.c_str());
    const std::string format = "PRAGMA user_version = " + std::to_string(kFormat);
    sqlite::Run(*database_, format.c_str());
    sqlite::Run(*database_, "COMMIT");
}

void ShowDatabase::Check() const {
    // Again, for a log that was left may hold a newer header.
    CheckMarks(sqlite::Number(*database_, "PRAGMA application_id"),
               sqlite::Number(*database_, "PRAGMA user_version"));
    const std::string found = sqlite::Text(*database_, "PRAGMA quick_check(1)");
    if (found != "ok") {
        throw sqlite::Error(SQLITE_CORRUPT, "it is damaged: " + found);
    }
    sqlite::Run(*database_, "ROLLBACK");
}

void ShowDatabase::Accept() {
    if (sqlite::Text(*database_, "PRAGMA journal_mode = WAL") != "wal") {
        throw sqlite::Error(SQLITE_CANTOPEN, "it cannot be written safely in its folder");
    }
    database_->Configure(SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, false);
    leftovers_.Keep();
}

} // namespace CL
