#include "RawRegistry.h"

#include <doctest/doctest.h>

using namespace platform;

namespace {

// A key opened to be read; handle 0 when there is none.
class OpenKey {
public:
    OpenKey(Handle root, const std::string& key) { RegOpenKeyExA(root, key, 0, KeyQueryValue, handle); }
    ~OpenKey() { RegCloseKey(handle); }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    Handle handle = 0;
};

constexpr std::uint32_t Room = 4096;

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
    const OpenKey open(root, key);
    RawData data{0, std::string(Room, '\0')};
    std::uint32_t size = Room;
    if (RegQueryValueExA(open.handle, name, data.type, data.bytes, size) != StatusSuccess) {
        return {};
    }
    data.bytes.resize(size);
    return data;
}

bool RawKeyExists(Handle root, const std::string& key) {
    return OpenKey(root, key).handle != 0;
}

std::vector<std::string> RawValueNames(Handle root, const std::string& key) {
    const OpenKey open(root, key);
    std::vector<std::string> names;
    std::string name(Room, '\0');
    std::string data(Room, '\0');
    std::uint32_t type = 0;
    for (std::int32_t index = 0;; ++index) {
        std::uint32_t nameSize = Room;
        std::uint32_t dataSize = Room;
        if (RegEnumValueA(open.handle, index, name, nameSize, type, data, dataSize) != StatusSuccess) {
            return names;
        }
        names.push_back(name.substr(0, nameSize));
    }
}
