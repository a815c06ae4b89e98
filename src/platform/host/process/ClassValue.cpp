#include "platform/host/process/ClassValue.h"

#include <algorithm>

#include "platform/Bytes.h"
#include "platform/Process.h"
#include "platform/RegistryCalls.h"

namespace platform::host {

namespace {

Status ReadValue(const std::string& key, const std::string& name, std::uint32_t& type, std::string& data) {
    constexpr std::uint32_t longestCommandLine = 32767;
    Handle opened = 0;
    Status status = RegOpenKeyExA(KeyClassesRoot, key, 0, KeyQueryValue, opened);
    if (status == StatusSuccess) {
        std::uint32_t size = longestCommandLine;
        data.resize(size);
        status = RegQueryValueExA(opened, name, type, data, size);
        data.resize(status == StatusSuccess ? size : 0);
        RegCloseKey(opened);
    }
    return status;
}

// Replaces each "%NAME%" with the variable's value. Leaves unset variables and "%1" unchanged.
std::string ExpandVariables(std::string text) {
    std::size_t end = 0;
    for (std::size_t start = text.find('%'); start != std::string::npos; start = text.find('%', end)) {
        end = std::min(text.find('%', start + 1), text.size());
        const std::string value = GetEnvironmentVariableA(text.substr(start + 1, end - start - 1));
        if (end < text.size() && !value.empty()) {
            text.replace(start, end - start + 1, value);
            end = start + value.size();
        }
    }
    return text;
}

}  // namespace

Status ClassText(const std::string& key, std::string& text) {
    std::uint32_t type = RegNone;
    std::string data;
    const Status status = ReadValue(key, "", type, data);
    const bool isText = type == RegSz || type == RegExpandSz;
    text = isText ? data.substr(0, data.find('\0')) : "";
    if (type == RegExpandSz) {
        text = ExpandVariables(text);
    }
    return status == StatusSuccess && !isText ? StatusFileNotFound : status;
}

std::uint32_t ClassNumber(const std::string& key, const std::string& name) {
    std::uint32_t type = RegNone;
    std::string data;
    return ReadValue(key, name, type, data) == StatusSuccess && type == RegDword ? NumberFromBytes(data) : 0;
}

}  // namespace platform::host
