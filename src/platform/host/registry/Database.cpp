#include "platform/host/registry/Database.h"

#include "platform/Bytes.h"
#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/host/Unicode.h"

namespace platform::host {

void Query::BindData(int parameter, std::uint32_t type, const std::string& bytes) {
    const bool isText = type == RegSz || type == RegExpandSz;
    if (isText && !bytes.empty() && bytes.find('\0') == bytes.size() - 1) {
        statement_.bind(parameter, ToUtf8(TextFromAnsi(bytes.substr(0, bytes.size() - 1))));
    } else if (type == RegDword && bytes.size() == sizeof(std::uint32_t)) {
        statement_.bind(parameter, NumberFromBytes(bytes));
    } else {
        statement_.bind(parameter, bytes.data(), static_cast<int>(bytes.size()));
    }
}

std::string Query::Data(int column) const {
    const SQLite::Column data = statement_.getColumn(column);
    if (data.isInteger()) {
        return BytesFromNumber(data.getUInt());
    }
    return data.isText() ? AnsiFromText(FromUtf8(data.getString())) + '\0' : data.getString();
}

}  // namespace platform::host
