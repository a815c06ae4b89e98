#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/VariadicBind.h>
#include <sqlite3.h>

#include <array>
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

    // Finding a key again takes no transaction if the keys haven't changed.
    std::map<std::pair<std::int64_t, std::string>, std::int64_t> foundKeys = {};  // in this version of the keys
    std::uint32_t foundVersion = 0;
    std::uint32_t ownValueChanges = 0;

    // Returns a number that grows with each change to the file except those counted in `ownValueChanges`. A database in
    // memory never changes.
    [[nodiscard]] std::uint32_t KeyVersion() const {
        constexpr sqlite3_int64 changeCounterOffset = 24;
        sqlite3_file* file = nullptr;
        sqlite3_file_control(getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
        std::array<unsigned char, 4> counter{};
        if (file->pMethods != nullptr) {
            file->pMethods->xRead(file, counter.data(), counter.size(), changeCounterOffset);
        }
        return (counter[0] << 24U | counter[1] << 16U | counter[2] << 8U | counter[3]) - ownValueChanges;
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
