#include "platform/host/process/ClassValue.h"

#include <span>

#include "platform/RegistryCalls.h"

namespace platform::host {

namespace {

// Fills `data` with the value when it is of the type and fits; gives the number of bytes.
std::uint32_t ReadValue(const std::string& key, const std::string& name, std::uint32_t wantedType,
                        std::span<char> data) {
    Handle opened = 0;
    if (RegOpenKeyExA(KeyClassesRoot, key, 0, KeyQueryValue, opened) != StatusSuccess) {
        return 0;
    }
    std::uint32_t type = RegNone;
    auto size = static_cast<std::uint32_t>(data.size());
    const Status status = RegQueryValueExA(opened, name, type, data, size);
    RegCloseKey(opened);
    return status == StatusSuccess && type == wantedType ? size : 0;
}

}  // namespace

std::string ClassText(const std::string& key) {
    constexpr std::size_t longestCommandLine = 32767;
    std::string text(longestCommandLine, '\0');
    text.resize(ReadValue(key, "", RegSz, text));
    return text.substr(0, text.find('\0'));
}

std::uint32_t ClassNumber(const std::string& key, const std::string& name) {
    std::uint32_t number = 0;
    return ReadValue(key, name, RegDword, {reinterpret_cast<char*>(&number), sizeof number}) == 0 ? 0 : number;
}

}  // namespace platform::host
