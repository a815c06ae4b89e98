#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace platform::host {

// An open SQLite database with its prepared statements. What fails throws an SQLite::Exception.
class Database {
public:
    // `address` is a URI, or ":memory:"; `flags` are those of sqlite3_open_v2.
    Database(const std::string& address, int flags);

    [[nodiscard]] SQLite::Database& Connection() { return connection_; }
    // The statement of this text, which has to be a constant; it is prepared at the first call, and kept.
    SQLite::Statement& Prepared(const char* text);

private:
    SQLite::Database connection_;
    std::map<const char*, SQLite::Statement> statements_;
};

// A value as the calls of the registry take it.
struct TypedBytes {
    std::uint32_t type;
    std::string_view bytes;
};

// One run of a prepared statement, its parameters in the order of their numbers. Of a value's data it stores 32-bit
// numbers as such and texts as text without their terminator, so that they can be read from outside.
class Query {
public:
    template <typename... Parameters>
    Query(Database& database, const char* text, const Parameters&... parameters) : statement_(database.Prepared(text)) {
        int place = 0;
        (Bind(++place, parameters), ...);
    }
    ~Query() { statement_.tryReset(); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    // False behind the last row.
    bool Step() { return statement_.executeStep(); }
    // Makes a change; false when there was nothing to change.
    bool Run() { return statement_.exec() != 0; }
    // The columns of the present row, from 0.
    [[nodiscard]] bool IsNull(int column) const { return statement_.isColumnNull(column); }
    [[nodiscard]] std::int64_t Number(int column) const { return statement_.getColumn(column); }
    [[nodiscard]] std::u16string Text(int column) const;
    // A value's data as the calls of the registry give it.
    [[nodiscard]] std::string Bytes(int column) const;

private:
    void Bind(int place, std::int64_t number) { statement_.bind(place, number); }
    void Bind(int place, const std::u16string& text);
    void Bind(int place, const TypedBytes& value);

    SQLite::Statement& statement_;
};

}  // namespace platform::host
