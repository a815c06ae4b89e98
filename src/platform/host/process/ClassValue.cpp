#include "platform/host/process/ClassValue.h"

#include "platform/Bytes.h"
#include "platform/Process.h"
#include "platform/RegistryCalls.h"

namespace platform::host {

namespace {

struct ClassValue {
    std::uint32_t type = RegNone;
    std::string data;
};

Status ReadValue(const std::string& key, const std::string& name, ClassValue& value) {
    constexpr std::uint32_t longestCommandLine = 32767;
    Handle opened = 0;
    Status status = RegOpenKeyExA(KeyClassesRoot, key, 0, KeyQueryValue, opened);
    if (status != StatusSuccess) {
        return status;
    }
    value.data.resize(longestCommandLine);
    std::uint32_t size = longestCommandLine;
    status = RegQueryValueExA(opened, name, value.type, value.data, size);
    RegCloseKey(opened);
    value.data.resize(status == StatusSuccess ? size : 0);
    return status;
}

// Replaces each "%NAME%" by the variable's value. Unset variables remain as they are, and so does "%1".
std::string ExpandVariables(const std::string& text) {
    std::string expanded;
    std::size_t start = 0;
    for (;;) {
        const std::size_t first = text.find('%', start);
        const std::size_t last = first == std::string::npos ? first : text.find('%', first + 1);
        if (last == std::string::npos) {
            return expanded + text.substr(start);
        }
        const std::string value = GetEnvironmentVariableA(text.substr(first + 1, last - first - 1));
        const std::size_t end = value.empty() ? last : first;
        expanded += text.substr(start, end - start) + value;
        start = value.empty() ? last : last + 1;
    }
}

}  // namespace

Status ClassText(const std::string& key, std::string& text) {
    text.clear();
    ClassValue value;
    if (const Status status = ReadValue(key, "", value); status != StatusSuccess) {
        return status;
    }
    if (value.type != RegSz && value.type != RegExpandSz) {
        return StatusFileNotFound;
    }
    text = value.data.substr(0, value.data.find('\0'));
    if (value.type == RegExpandSz) {
        text = ExpandVariables(text);
    }
    return StatusSuccess;
}

std::uint32_t ClassNumber(const std::string& key, const std::string& name) {
    ClassValue value;
    const Status status = ReadValue(key, name, value);
    return status == StatusSuccess && value.type == RegDword ? NumberFromBytes(value.data) : 0;
}

}  // namespace platform::host
