#include "platform/host/registry/RegistryFile.h"

#include <SQLiteCpp/Transaction.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/host/StatusFromErrno.h"

namespace platform::host {

namespace {

// Numbers of keys are not used again (AUTOINCREMENT), so that a handle of a deleted key is known. Paths, from "\\" on,
// and folded names are in capital letters, for comparing and ordering. The view is for those who look in from outside.
constexpr const char* Tables = R"(
CREATE TABLE IF NOT EXISTS key (
    id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER, name TEXT NOT NULL, path TEXT NOT NULL UNIQUE,
    UNIQUE (parent, path));
INSERT OR IGNORE INTO key VALUES (2, 1, 'S-1-5-21-0-0-0-1000', '\S-1-5-21-0-0-0-1000');
INSERT OR IGNORE INTO key VALUES (3, 2, 'Software', '\S-1-5-21-0-0-0-1000\SOFTWARE');
INSERT OR IGNORE INTO key VALUES (4, 3, 'Classes', '\S-1-5-21-0-0-0-1000\SOFTWARE\CLASSES');
CREATE TABLE IF NOT EXISTS value (
    key INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL, folded TEXT NOT NULL,
    type INTEGER NOT NULL, data NOT NULL,
    PRIMARY KEY (key, position), UNIQUE (key, folded)) WITHOUT ROWID;
CREATE TRIGGER IF NOT EXISTS key_deleted AFTER DELETE ON key BEGIN DELETE FROM value WHERE key = old.id; END;
CREATE VIEW IF NOT EXISTS registry (path, name, type, value) AS
    WITH RECURSIVE place (id, path) AS (
        SELECT 2, name FROM key WHERE id = 1
        UNION ALL
        SELECT key.id, place.path || '\' || key.name FROM key JOIN place ON key.parent = place.id)
    SELECT path, name,
        CASE type WHEN 0 THEN 'REG_NONE' WHEN 1 THEN 'REG_SZ' WHEN 2 THEN 'REG_EXPAND_SZ' WHEN 3 THEN 'REG_BINARY'
            WHEN 4 THEN 'REG_DWORD' WHEN 7 THEN 'REG_MULTI_SZ' ELSE type END,
        CASE typeof(data) WHEN 'blob' THEN hex(data) ELSE data END
    FROM place JOIN value ON key = id ORDER BY path, position;
)";
constexpr const char* InsertTop = "INSERT OR IGNORE INTO key VALUES (1, NULL, ?, '')";

// SQLite takes a file that is smaller than this for an empty one, and would write over it.
constexpr off_t SmallestDatabase = 512;

bool ProcessMayWrite(const std::filesystem::path& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool IsSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_mode == other.st_mode &&
           (one.st_size == 0) == (other.st_size == 0);
}

// As SQLite takes it together with options.
std::string Address(const std::filesystem::path& path) {
    constexpr std::string_view special = "%?#";
    constexpr std::array escaped = {"%25", "%3F", "%23"};
    std::string address = "file://";
    for (const char character : path.native()) {
        const std::size_t place = special.find(character);
        address += place == std::string_view::npos ? std::string(1, character) : escaped[place];
    }
    return address;
}

}  // namespace

RegistryFile::RegistryFile(std::filesystem::path path, std::u16string root)
    : path_(std::move(path)), root_(std::move(root)) {
}

Database& RegistryFile::ForReading() {
    struct stat now = {};
    if (stat(path_.c_str(), &now) != 0) {
        if (errno != ENOENT && errno != ENOTDIR) {
            throw RegistryFailure{StatusFromErrno(errno)};
        }
        now = {};
    }
    if (database_ && IsSameFile(now, opened_)) {
        return *database_;
    }
    database_.reset();
    writable_ = (now.st_mode & S_IWUSR) != 0 && ProcessMayWrite(path_) &&
                ProcessMayWrite(path_.parent_path());  // SQLite's log stands beside the file
    if (now.st_size == 0) {
        database_.emplace(":memory:", SQLite::OPEN_READWRITE);
        CreateTables(*database_);
    } else if (now.st_size < SmallestDatabase) {
        throw RegistryFailure{StatusDatabaseDamaged};
    } else {
        database_ = OpenFile();
    }
    opened_ = now;
    return *database_;
}

Database& RegistryFile::ForWriting() {
    if (!IsWritable()) {
        throw RegistryFailure{StatusAccessDenied};
    }
    if (opened_.st_size == 0) {
        CreateFile();
        ForReading();
    }
    return *database_;
}

bool RegistryFile::IsWritable() {
    ForReading();
    return opened_.st_ino == 0 || writable_;  // of a missing file the system judges when it is made
}

Status RegistryFile::StatusOf(const SQLite::Exception& failure) {
    switch (failure.getErrorCode()) {
        case SQLITE_BUSY:
            return StatusBusy;
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
        case SQLITE_ERROR:  // a database without the registry's tables
            return StatusDatabaseDamaged;
        case SQLITE_FULL:
            return StatusDiskFull;
        case SQLITE_READONLY:
            return StatusAccessDenied;
        default: {  // a commit leaves the reason in errno alone
            const int number = database_ ? sqlite3_system_errno(database_->Connection().getHandle()) : 0;
            return StatusFromErrno(number != 0 ? number : errno != 0 ? errno : EIO);
        }
    }
}

// A file that takes no changes is read without a log where the last writer left none: a new log would stay, and its
// rights would keep the next writer out.
Database RegistryFile::OpenFile() const {
    const std::string address = Address(path_);
    if (writable_) {
        Database database(address, SQLite::OPEN_READWRITE | SQLite::OPEN_URI);
        // SQLite does not wait for another process to begin the log. Without one the file serves until the next open.
        database.Connection().tryExec("PRAGMA synchronous = NORMAL; PRAGMA journal_mode = WAL");
        return database;
    }
    std::error_code noLog;
    const bool hasLog = std::filesystem::file_size(path_.native() + "-wal", noLog) > 0 && !noLog;
    return {hasLog ? address : address + "?immutable=1", SQLite::OPEN_READONLY | SQLite::OPEN_URI};
}

// SQLite sees to it that the file is empty or whole, and that another process which makes it too finds it so.
void RegistryFile::CreateFile() const {
    std::error_code failure;  // told by the open
    std::filesystem::create_directories(path_.parent_path(), failure);
    Database database(Address(path_), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_URI);
    database.Connection().exec("PRAGMA page_size = 1024");  // a change writes whole pages to the log
    CreateTables(database);
}

void RegistryFile::CreateTables(Database& database) const {
    SQLite::Transaction transaction(database.Connection(), SQLite::TransactionBehavior::IMMEDIATE);
    database.Connection().exec(Tables);
    Query(database, InsertTop, root_).Run();
    transaction.commit();
}

}  // namespace platform::host
