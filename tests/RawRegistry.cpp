#include "RawRegistry.h"

#include <doctest/doctest.h>

#include <utility>

namespace {

class RawKey {
public:
    RawKey(platform::Handle root, const std::string& key, std::int32_t access) {
        platform::RegOpenKeyExA(root, key, 0, access, handle_);
    }
    ~RawKey() {
        if (handle_ != 0) {
            platform::RegCloseKey(handle_);
        }
    }
    RawKey(const RawKey&) = delete;
    RawKey& operator=(const RawKey&) = delete;

    [[nodiscard]] platform::Handle Get() const { return handle_; }

private:
    platform::Handle handle_ = 0;
};

}  // namespace

RawData RawNumber(std::uint32_t number) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(static_cast<unsigned char>(number >> shift));
    }
    return {platform::RegDword, bytes};
}

RawData RawText(const std::string& text) {
    return {platform::RegSz, text + std::string(1, '\0')};
}

void RawValueSet(platform::Handle root, const std::string& key, const std::string& name, const RawData& data) {
    platform::Handle handle = 0;
    std::uint32_t disposition = 0;
    REQUIRE(platform::RegCreateKeyExA(root, key, "", 0, platform::KeySetValue, handle, disposition) == 0);
    CHECK(platform::RegSetValueExA(handle, name, data.type, data.bytes) == 0);
    platform::RegCloseKey(handle);
}

std::optional<RawData> RawValue(platform::Handle root, const std::string& key, const std::string& name) {
    const RawKey open(root, key, platform::KeyQueryValue);
    RawData data{0, std::string(4096, '\0')};
    auto size = static_cast<std::uint32_t>(data.bytes.size());
    if (platform::RegQueryValueExA(open.Get(), name, data.type, data.bytes, size) != 0) {
        return {};
    }
    data.bytes.resize(size);
    return data;
}

bool RawKeyExists(platform::Handle root, const std::string& key) {
    return RawKey(root, key, platform::KeyQueryValue).Get() != 0;
}

std::vector<std::string> RawValueNames(platform::Handle root, const std::string& key) {
    const RawKey open(root, key, platform::KeyQueryValue);
    std::vector<std::string> names;
    for (std::int32_t index = 0;; ++index) {
        std::string name(4096, '\0');
        std::string data(4096, '\0');
        auto nameSize = static_cast<std::uint32_t>(name.size());
        auto dataSize = static_cast<std::uint32_t>(data.size());
        std::uint32_t type = 0;
        if (platform::RegEnumValueA(open.Get(), index, name, nameSize, type, data, dataSize) != 0) {
            return names;
        }
        name.resize(nameSize);
        names.push_back(std::move(name));
    }
}
