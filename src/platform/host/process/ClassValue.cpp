#include "platform/host/process/ClassValue.h"

#include <cstring>
#include <optional>

#include "platform/Process.h"
#include "platform/RegistryCalls.h"

namespace platform::host {

namespace {

struct ClassValue {
    std::uint32_t type = RegNone;
    std::string data;
};

std::optional<ClassValue> ReadValue(const std::string& key, const std::string& name) {
    constexpr std::uint32_t longestCommandLine = 32767;
    Handle opened = 0;
    if (RegOpenKeyExA(KeyClassesRoot, key, 0, KeyQueryValue, opened) != StatusSuccess) {
        return {};
    }
    ClassValue value{RegNone, std::string(longestCommandLine, '\0')};
    std::uint32_t size = longestCommandLine;
    const Status status = RegQueryValueExA(opened, name, value.type, value.data, size);
    RegCloseKey(opened);
    value.data.resize(size);
    return status == StatusSuccess ? std::optional(value) : std::nullopt;
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

std::string ClassText(const std::string& key) {
    const std::optional<ClassValue> value = ReadValue(key, "");
    if (!value || (value->type != RegSz && value->type != RegExpandSz)) {
        return {};
    }
    const std::string text = value->data.substr(0, value->data.find('\0'));
    return value->type == RegExpandSz ? ExpandVariables(text) : text;
}

std::uint32_t ClassNumber(const std::string& key, const std::string& name) {
    const std::optional<ClassValue> value = ReadValue(key, name);
    std::uint32_t number = 0;
    if (value && value->type == RegDword && value->data.size() == sizeof number) {
        std::memcpy(&number, value->data.data(), sizeof number);
    }
    return number;
}

}  // namespace platform::host
