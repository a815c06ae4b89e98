#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Handle.h"

namespace platform::host {

inline constexpr Status StatusBusy = 170;              // ERROR_BUSY: another process keeps the file locked
inline constexpr Status StatusDatabaseDamaged = 1009;  // ERROR_BADDB: the file is no registry, or a damaged one

// What ends a call on the registry: the status for its caller, and the file that gave it, if it was one.
struct RegistryFailure {
    Status status;
    std::string file = {};
};

// A value as the calls of the registry take it.
struct TypedBytes {
    std::uint32_t type;
    std::string_view bytes;
};

// An open SQLite database with its prepared statements. What fails throws a RegistryFailure.
class Database {
public:
    // `name` is a URI, or ":memory:"; `flags` are those of sqlite3_open_v2.
    Database(const std::string& name, int flags);

    // Runs statements without parameters, one or several, and passes over what rows they give.
    void Execute(const char* statements);
    // The statement of this text, which has to be a constant; it is prepared at the first call, and kept.
    sqlite3_stmt* Prepared(const char* text);
    void RollBack() noexcept;
    [[noreturn]] void Fail() const;

private:
    struct Close {
        void operator()(sqlite3* connection) const noexcept { sqlite3_close(connection); }
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3, Close> connection_;
    std::map<const char*, std::unique_ptr<sqlite3_stmt, Close>> statements_;
};

// One run of a prepared statement, its parameters in the order of their numbers. Of a value's data it stores 32-bit
// numbers as such and texts as text without their terminator, so that they can be read from outside.
class Query {
public:
    template <typename... Parameters>
    Query(Database& database, const char* text, const Parameters&... parameters)
        : database_(database), statement_(database.Prepared(text)) {
        int place = 0;
        (Bind(++place, parameters), ...);
    }
    ~Query() { sqlite3_reset(statement_); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    // False behind the last row.
    bool Step();
    // Steps behind the last row; a change is then made. False when there was none.
    bool Run();
    // The columns of the present row, from 0.
    [[nodiscard]] bool IsNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
    [[nodiscard]] std::int64_t Number(int column) const { return sqlite3_column_int64(statement_, column); }
    [[nodiscard]] std::u16string Text(int column) const;
    // A value's data as the calls of the registry give it.
    [[nodiscard]] std::string Bytes(int column) const;

private:
    void Bind(int place, std::int64_t number);
    void Bind(int place, const std::u16string& text);
    void Bind(int place, const TypedBytes& value);
    void Check(int result) const;

    Database& database_;
    sqlite3_stmt* statement_;
};

// Changes that are made as one; without a Commit they are undone.
struct Transaction {
    explicit Transaction(Database& changed) : database(changed) { database.Execute("BEGIN IMMEDIATE"); }
    ~Transaction() { database.RollBack(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit() const { database.Execute("COMMIT"); }

    Database& database;
};

}  // namespace platform::host
