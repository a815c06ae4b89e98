#include "platform/host/registry/Database.h"

#include <bit>
#include <cstring>

#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

// So long a call waits for another process, which holds a lock for milliseconds when all is well.
constexpr int BusyMilliseconds = 2000;

static_assert(std::endian::native == std::endian::little, "a REG_DWORD has its low byte first");

}  // namespace

Database::Database(const std::string& address, int flags)
    : connection_(address, flags | SQLite::OPEN_NOMUTEX, BusyMilliseconds) {
}

SQLite::Statement& Database::Prepared(const char* text) {
    return statements_.try_emplace(text, connection_, text).first->second;
}

std::u16string Query::Text(int column) const {
    return FromUtf8(statement_.getColumn(column).getString());
}

std::string Query::Bytes(int column) const {
    const SQLite::Column data = statement_.getColumn(column);
    if (data.isInteger()) {
        const std::uint32_t number = data.getUInt();
        return {reinterpret_cast<const char*>(&number), sizeof number};
    }
    return data.isText() ? AnsiFromText(Text(column)) + '\0' : data.getString();
}

void Query::Bind(int place, const std::u16string& text) {
    statement_.bind(place, ToUtf8(text));
}

void Query::Bind(int place, const TypedBytes& value) {
    std::string bytes(value.bytes);
    const bool isText = !bytes.empty() && (value.type == RegSz || value.type == RegExpandSz);
    if (isText && bytes.back() != '\0') {
        bytes += '\0';
    }
    if (isText && bytes.find('\0') == bytes.size() - 1) {
        bytes.pop_back();
        Bind(place, TextFromAnsi(bytes));
    } else if (std::uint32_t number = 0; value.type == RegDword && bytes.size() == sizeof number) {
        std::memcpy(&number, bytes.data(), sizeof number);
        Bind(place, number);
    } else {
        statement_.bind(place, bytes.data(), static_cast<int>(bytes.size()));
    }
}

}  // namespace platform::host
