#include "platform/host/registry/RegistryFile.h"

#include <SQLiteCpp/Transaction.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <system_error>

#include "platform/host/StatusFromErrno.h"

namespace platform::host {

namespace {

constexpr Status StatusBusy = 170;              // ERROR_BUSY
constexpr Status StatusDatabaseDamaged = 1009;  // ERROR_BADDB

// AUTOINCREMENT ensures that key ids are never reused, so that a handle to a deleted key is recognised. The columns
// `path` (from the first "\" on) and `folded` are uppercase, for comparison and sorting. The view is for people who
// inspect the file.
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
    WITH RECURSIVE full (id, path) AS (
        SELECT 2, name FROM key WHERE id = 1
        UNION ALL
        SELECT key.id, full.path || '\' || key.name FROM key JOIN full ON key.parent = full.id)
    SELECT path, name,
        CASE type WHEN 0 THEN 'REG_NONE' WHEN 1 THEN 'REG_SZ' WHEN 2 THEN 'REG_EXPAND_SZ' WHEN 3 THEN 'REG_BINARY'
            WHEN 4 THEN 'REG_DWORD' WHEN 7 THEN 'REG_MULTI_SZ' ELSE type END,
        CASE typeof(data) WHEN 'blob' THEN hex(data) ELSE data END
    FROM full JOIN value ON key = id ORDER BY path, position;
)";
constexpr const char* InsertTop = "INSERT OR IGNORE INTO key VALUES (1, NULL, ?, '')";

bool MayWrite(const std::filesystem::path& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool IsSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_mode == other.st_mode &&
           (one.st_size == 0) == (other.st_size == 0);
}

// False if a killed process left a change that this process isn't allowed to roll back.
bool CanRead(Database& database) {
    return database.tryExec("SELECT count(*) FROM sqlite_master") != SQLITE_READONLY;
}

}  // namespace

Database& RegistryFile::ForReading() {
    const struct stat now = FileStatus();
    if (database_ && IsSameFile(now, opened_) && (writable_ || CanRead(*database_))) {
        database_->setBusyTimeout(BusyMilliseconds());
        return *database_;
    }
    database_.reset();
    // SQLite creates a journal in the folder. A missing file counts as writable, but creating it may still fail.
    const bool isMissing = now.st_ino == 0;
    writable_ = isMissing || ((now.st_mode & S_IWUSR) != 0 && MayWrite(path_) && MayWrite(path_.parent_path()));
    opened_ = now;
    try {
        database_ = Open(now.st_size == 0 ? ":memory:" : path_.native(), SQLite::OPEN_READWRITE);
    } catch (const SQLite::Exception& exception) {
        if (exception.getExtendedErrorCode() != SQLITE_READONLY_ROLLBACK) {
            throw;
        }
        database_ = RolledBackCopy();
        opened_.st_mode = 0;  // makes the next call reopen the file
    }
    return *database_;
}

Database& RegistryFile::ForWriting() {
    ForReading();
    RequireWritable();
    if (opened_.st_size == 0) {
        std::error_code error;
        std::filesystem::create_directories(path_.parent_path(), error);
        if (error) {
            throw Failure(StatusFromErrno(error.value()));
        }
        Open(path_.native(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        ForReading();
    }
    return *database_;
}

void RegistryFile::RequireWritable() const {
    if (!writable_) {
        throw Failure(StatusAccessDenied);
    }
}

RegistryFailure RegistryFile::FailureFrom(const SQLite::Exception& exception) {
    static const std::map<int, Status> statuses = {{SQLITE_BUSY, StatusBusy},
                                                   {SQLITE_NOTADB, StatusDatabaseDamaged},
                                                   {SQLITE_CORRUPT, StatusDatabaseDamaged},
                                                   {SQLITE_ERROR, StatusDatabaseDamaged},  // file has other tables
                                                   {SQLITE_FULL, StatusDiskFull},
                                                   {SQLITE_READONLY, StatusAccessDenied},
                                                   {SQLITE_CANTOPEN, StatusAccessDenied}};
    const auto found = statuses.find(exception.getErrorCode());
    const Status status = found == statuses.end() ? StatusIoDevice : found->second;
    if (status == StatusBusy) {
        endOfPause_ = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    }
    return Failure(status);
}

RegistryFailure RegistryFile::Failure(Status status) const {
    static const std::map<Status, const char16_t*> sentences = {
        {StatusBusy, u"wird von einem anderen Programm gesperrt."},
        {StatusDatabaseDamaged, u"ist beschädigt oder keine Registrierung."},
        {StatusDiskFull, u"kann nicht wachsen: Der Datenträger ist voll."},
        {StatusAccessDenied, u"erlaubt diesen Zugriff nicht."}};
    const auto found = sentences.find(status);
    const char16_t* const end =
        found == sentences.end() ? u"kann nicht gelesen oder geschrieben werden." : found->second;
    return {status, u"Die Registrierungsdatei \"" + path_.u16string() + u"\" " + end};
}

// Returns all zeros if the file is missing. Throws if the path refers to something that can't be a registry file.
struct stat RegistryFile::FileStatus() const {
    struct stat now = {};
    const bool isFound = stat(path_.c_str(), &now) == 0;
    if (!isFound && errno != ENOENT && errno != ENOTDIR) {
        throw Failure(StatusFromErrno(errno));
    }
    // SQLite would treat a file of one byte as empty and overwrite it.
    if (isFound && (!S_ISREG(now.st_mode) || now.st_size == 1)) {
        throw Failure(StatusDatabaseDamaged);
    }
    return now;
}

// Returns how long a call waits for another process's lock, which normally lasts milliseconds. For a while after a
// timeout, calls don't wait, so that a locked file doesn't delay one operation again and again.
int RegistryFile::BusyMilliseconds() const {
    return std::chrono::steady_clock::now() < endOfPause_ ? 0 : 1100;
}

// Opens a database in truncate journal mode, so that (unlike with WAL) readers need no second file and no permission to
// create one. Changes survive a killed process, but not a power failure. If the file has no tables yet, creates
// them in one transaction, because two processes may do so at once.
Database RegistryFile::Open(const std::string& path, int flags) const {
    Database database(path, flags | SQLite::OPEN_NOMUTEX, BusyMilliseconds());
    database.exec("PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = OFF");
    if (database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0) {
        SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
        database.exec(Tables);
        Query(database, InsertTop, root_)->exec();
        transaction.commit();
    }
    return database;
}

// Returns a temporary copy in which a killed process's unfinished change is rolled back. Used if this process isn't
// allowed to roll back the change in the file itself.
Database RegistryFile::RolledBackCopy() const {
    std::error_code error;  // ignored; opening the copy reports a missing file
    std::string folder = (std::filesystem::temp_directory_path(error) / "vtv4v-XXXXXX").native();
    if (mkdtemp(folder.data()) == nullptr) {
        throw Failure(StatusFromErrno(errno));
    }
    const std::filesystem::path copy = std::filesystem::path(folder) / "copy";
    for (const char* const suffix : {"", "-journal"}) {
        std::filesystem::copy_file(path_.native() + suffix, copy.native() + suffix, error);
        std::filesystem::permissions(copy.native() + suffix, std::filesystem::perms::owner_all, error);
    }
    Database database = Open(copy.native(), SQLite::OPEN_READWRITE);
    std::filesystem::remove_all(folder, error);  // the open file remains readable
    return database;
}

}  // namespace platform::host
