#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/VariadicBind.h>
#include <arpa/inet.h>
#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace platform::host {

// An open SQLite database and its prepared statements, indexed by the addresses of their SQL strings. Failures are
// thrown as SQLite::Exception.
struct Database : SQLite::Database {
    using SQLite::Database::Database;
    std::map<const char*, SQLite::Statement> statements = {};

    // A cache of key ids, by start key and path, which saves a transaction per lookup. Valid only while KeyVersion
    // returns `foundVersion`.
    std::map<std::pair<std::int64_t, std::string>, std::int64_t> foundKeys = {};
    std::uint32_t foundVersion = 0;
    std::uint32_t ownValueChanges = 0;  // how many times this process has changed only a value

    // Returns the number of pages that this process has written. Setting a value to its current data writes none.
    [[nodiscard]] int PagesWritten() const {
        int pages = 0;
        int highest = 0;
        sqlite3_db_status(getHandle(), SQLITE_DBSTATUS_CACHE_WRITE, &pages, &highest, 0);
        return pages;
    }

    // Returns a number that changes whenever the keys may have changed: with every change to the file, except when this
    // process sets a value. The number never changes for a database in memory.
    [[nodiscard]] std::uint32_t KeyVersion() const {
        constexpr sqlite3_int64 changeCounterOffset = 24;
        sqlite3_file* file = nullptr;
        sqlite3_file_control(getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
        std::uint32_t changeCounter = 0;  // big-endian
        if (file->pMethods != nullptr) {
            file->pMethods->xRead(file, &changeCounter, sizeof changeCounter, changeCounterOffset);
        }
        return ntohl(changeCounter) - ownValueChanges;
    }
};

// Binds the parameters of the statement `sql` and resets the statement at the end of the scope. `sql` must be a
// constant, because each statement is prepared only once.
class Query {
public:
    template <typename... Parameters>
    Query(Database& database, const char* sql, const Parameters&... parameters)
        : statement_(database.statements.try_emplace(sql, database, sql).first->second) {
        SQLite::bind(statement_, parameters...);
    }
    ~Query() { statement_.tryReset(); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    SQLite::Statement* operator->() { return &statement_; }

private:
    SQLite::Statement& statement_;
};

}  // namespace platform::host
