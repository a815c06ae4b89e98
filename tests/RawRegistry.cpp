#include "RawRegistry.h"

#include <doctest/doctest.h>

using namespace platform;

namespace {

// Opens a key for reading. Returns 0 if the key is missing.
Handle OpenForReading(Handle root, const std::string& key) {
    Handle handle = 0;
    RegOpenKeyExA(root, key, 0, KeyQueryValue, handle);
    return handle;
}

constexpr std::uint32_t BufferSize = 4096;

}  // namespace

RawData RawNumber(std::uint32_t number) {
    return {RegDword, {reinterpret_cast<const char*>(&number), sizeof number}};
}

RawData RawText(const std::string& text) {
    return {RegSz, text + std::string(1, '\0')};
}

void RawValueSet(Handle root, const std::string& key, const std::string& name, const RawData& data) {
    Handle handle = 0;
    std::uint32_t disposition = 0;
    REQUIRE(RegCreateKeyExA(root, key, "", 0, KeySetValue, handle, disposition) == StatusSuccess);
    CHECK(RegSetValueExA(handle, name, data.type, data.bytes) == StatusSuccess);
    RegCloseKey(handle);
}

std::optional<RawData> RawValue(Handle root, const std::string& key, const std::string& name) {
    const Handle handle = OpenForReading(root, key);
    RawData data{0, std::string(BufferSize, '\0')};
    std::uint32_t size = BufferSize;
    const Status status = RegQueryValueExA(handle, name, data.type, data.bytes, size);
    RegCloseKey(handle);
    data.bytes.resize(size);
    return status == StatusSuccess ? std::optional(data) : std::nullopt;
}

bool RawKeyExists(Handle root, const std::string& key) {
    return RegCloseKey(OpenForReading(root, key)) == StatusSuccess;
}

std::vector<std::string> RawValueNames(Handle root, const std::string& key) {
    const Handle handle = OpenForReading(root, key);
    std::vector<std::string> names;
    std::string name(BufferSize, '\0');
    std::string data(BufferSize, '\0');
    std::uint32_t nameSize = BufferSize;
    std::uint32_t dataSize = BufferSize;
    std::uint32_t type = 0;
    for (std::int32_t index = 0; RegEnumValueA(handle, index, name, nameSize, type, data, dataSize) == StatusSuccess;
         ++index) {
        names.push_back(name.substr(0, nameSize));
        nameSize = dataSize = BufferSize;
    }
    RegCloseKey(handle);
    return names;
}
