#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/VariadicBind.h>

#include <map>

namespace platform::host {

// An open SQLite database and its prepared statements, indexed by the addresses of their SQL strings. Failures are
// thrown as SQLite::Exception.
struct Database : SQLite::Database {
    using SQLite::Database::Database;
    std::map<const char*, SQLite::Statement> statements = {};
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
