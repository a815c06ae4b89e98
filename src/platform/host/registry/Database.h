#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/VariadicBind.h>

#include <cstdint>
#include <map>
#include <string>

namespace platform::host {

// An open SQLite database and its prepared statements. Failures are thrown as SQLite::Exception.
class Database {
public:
    // `flags` are those of sqlite3_open_v2. A call that meets another process' lock waits for `busyMilliseconds`.
    Database(const std::string& path, int flags, int busyMilliseconds)
        : connection_(path, flags | SQLite::OPEN_NOMUTEX, busyMilliseconds) {}

    [[nodiscard]] SQLite::Database& Connection() { return connection_; }
    // Returns the statement `sql`, which must be a constant: it is prepared once and found by its address.
    SQLite::Statement& Prepared(const char* sql) {
        return statements_.try_emplace(sql, connection_, sql).first->second;
    }

private:
    SQLite::Database connection_;
    std::map<const char*, SQLite::Statement> statements_;
};

// Binds the parameters of a prepared statement, and resets the statement at the end of the scope.
class Query {
public:
    template <typename... Parameters>
    Query(Database& database, const char* sql, const Parameters&... parameters) : statement_(database.Prepared(sql)) {
        SQLite::bind(statement_, parameters...);
    }
    ~Query() { statement_.tryReset(); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    SQLite::Statement* operator->() { return &statement_; }

    // Binds the data of a registry value. Stores 32-bit numbers as integers and strings as text without their
    // terminator, so that SQLite's own shell can show them, and any other data as a blob.
    void BindData(int parameter, std::uint32_t type, const std::string& bytes);
    // Returns data that BindData stored.
    [[nodiscard]] std::string Data(int column) const;

private:
    SQLite::Statement& statement_;
};

}  // namespace platform::host
