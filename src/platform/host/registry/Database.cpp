#include "platform/host/registry/Database.h"

#include <algorithm>
#include <cerrno>

#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/host/FileDescriptor.h"

namespace platform::host {

namespace {

// So long a call waits for another process, which holds a lock for milliseconds when all is well.
constexpr int BusyMilliseconds = 2000;

Status StatusOf(sqlite3* connection) {
    switch (sqlite3_errcode(connection)) {
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
            const int failure = sqlite3_system_errno(connection);
            return StatusFromErrno(failure != 0 ? failure : errno != 0 ? errno : EIO);
        }
    }
}

}  // namespace

Database::Database(const std::string& name, int flags) {
    sqlite3* connection = nullptr;
    const int result = sqlite3_open_v2(name.c_str(), &connection, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    connection_.reset(connection);
    if (result != SQLITE_OK) {
        Fail();
    }
    sqlite3_busy_timeout(connection, BusyMilliseconds);
}

void Database::Execute(const char* statements) {
    if (sqlite3_exec(connection_.get(), statements, nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail();
    }
}

sqlite3_stmt* Database::Prepared(const char* text) {
    auto& statement = statements_[text];
    if (statement == nullptr) {
        sqlite3_stmt* prepared = nullptr;
        if (sqlite3_prepare_v2(connection_.get(), text, -1, &prepared, nullptr) != SQLITE_OK) {
            Fail();
        }
        statement.reset(prepared);
    }
    return statement.get();
}

void Database::RollBack() noexcept {
    if (sqlite3_get_autocommit(connection_.get()) == 0) {
        sqlite3_exec(connection_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void Database::Fail() const {
    const char* const file = sqlite3_db_filename(connection_.get(), "main");
    throw RegistryFailure{StatusOf(connection_.get()), file == nullptr ? "" : file};
}

bool Query::Step() {
    errno = 0;
    const int result = sqlite3_step(statement_);
    Check(result == SQLITE_ROW || result == SQLITE_DONE ? SQLITE_OK : result);
    return result == SQLITE_ROW;
}

bool Query::Run() {
    const bool gaveRow = Step();
    while (gaveRow && Step()) {
    }
    return gaveRow;
}

void Query::Check(int result) const {
    if (result != SQLITE_OK) {
        database_.Fail();
    }
}

std::u16string Query::Text(int column) const {
    const auto* const text = static_cast<const char16_t*>(sqlite3_column_text16(statement_, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes16(statement_, column));
    return {text, size / sizeof(char16_t)};
}

std::string Query::Bytes(int column) const {
    std::string bytes;
    switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
            for (unsigned shift = 0; shift < 32; shift += 8) {
                bytes += static_cast<char>(Number(column) >> shift & 0xFF);
            }
            return bytes;
        case SQLITE_TEXT:
            return AnsiFromText(Text(column)) + '\0';
        default:
            const auto* const data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
            return bytes.assign(data, data + sqlite3_column_bytes(statement_, column));
    }
}

void Query::Bind(int place, std::int64_t number) {
    Check(sqlite3_bind_int64(statement_, place, number));
}

void Query::Bind(int place, const std::u16string& text) {
    const auto size = static_cast<int>(text.size() * sizeof(char16_t));
    Check(sqlite3_bind_text16(statement_, place, text.data(), size, SQLITE_TRANSIENT));
}

void Query::Bind(int place, const TypedBytes& value) {
    std::string bytes(value.bytes);
    const bool isText =
        !bytes.empty() && (value.type == RegSz || value.type == RegExpandSz || value.type == RegMultiSz);
    if (isText && bytes.back() != '\0') {
        bytes += '\0';
    }
    if (isText && bytes.find('\0') == bytes.size() - 1) {
        bytes.pop_back();
        Bind(place, TextFromAnsi(bytes));
    } else if (value.type == RegDword && bytes.size() == sizeof(std::uint32_t)) {
        std::int64_t number = 0;
        std::for_each(bytes.rbegin(), bytes.rend(),
                      [&](char byte) { number = number << 8 | static_cast<std::uint8_t>(byte); });
        Bind(place, number);
    } else {
        Check(sqlite3_bind_blob(statement_, place, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT));
    }
}

}  // namespace platform::host
