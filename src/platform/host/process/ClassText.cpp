#include "platform/host/process/ClassText.h"

#include <algorithm>
#include <cstdint>

#include "platform/Process.h"
#include "platform/RegistryCalls.h"

namespace platform::host {

namespace {

std::string Expanded(const std::string& text) {
    std::string expanded;
    std::size_t from = 0;
    for (std::size_t open = 0; (open = text.find('%', from)) != std::string::npos;) {
        const std::size_t close = text.find('%', open + 1);
        const std::string value =
            close == std::string::npos ? "" : GetEnvironmentVariableA(text.substr(open + 1, close - open - 1));
        const std::size_t next = value.empty() ? open + 1 : close + 1;
        expanded += text.substr(from, open - from) + (value.empty() ? "%" : value);
        from = next;
    }
    return expanded + text.substr(from);
}

}  // namespace

ClassText::ClassText(const std::string& key) {
    struct Key {
        Handle opened = 0;
        ~Key() { RegCloseKey(opened); }
    } open;
    status_ = RegOpenKeyExA(KeyClassesRoot, key, 0, KeyQueryValue, open.opened);
    if (status_ == StatusSuccess) {
        status_ = Read(open.opened);
    }
}

Status ClassText::Read(Handle key) {
    std::uint32_t type = RegNone;
    std::uint32_t size = 0;
    std::string data;
    Status status = RegQueryValueExA(key, "", type, data, size);
    while (status == StatusMoreData || (status == StatusSuccess && size > data.size())) {
        data.resize(size);
        status = RegQueryValueExA(key, "", type, data, size);
    }
    if (status == StatusFileNotFound) {
        return StatusSuccess;
    }
    if (status == StatusSuccess && type != RegSz && type != RegExpandSz) {
        return StatusInvalidParameter;
    }
    data.resize(std::min<std::size_t>(data.size(), size));
    data.resize(std::min(data.find('\0'), data.size()));
    text_ = type == RegExpandSz ? Expanded(data) : data;
    return status;
}

}  // namespace platform::host
