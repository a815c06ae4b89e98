#pragma once

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/RegistryCalls.h"

// Accesses the registry through system calls, bypassing the classes under test.

struct RawData {
    std::uint32_t type;
    std::string bytes;
    bool operator==(const RawData&) const = default;
};

// Returns a RegDword.
inline RawData RawNumber(std::uint32_t number) {
    return {platform::RegDword, {reinterpret_cast<const char*>(&number), sizeof number}};
}

// Returns a RegSz, including the terminator.
inline RawData RawText(const std::string& text) {
    return {platform::RegSz, text + std::string(1, '\0')};
}

inline void RawValueSet(platform::Handle root, const std::string& key, const std::string& name, const RawData& data) {
    platform::Handle handle = 0;
    std::uint32_t disposition = 0;
    REQUIRE(platform::RegCreateKeyExA(root, key, "", 0, platform::KeySetValue, handle, disposition) ==
            platform::StatusSuccess);
    CHECK(platform::RegSetValueExA(handle, name, data.type, data.bytes) == platform::StatusSuccess);
    platform::RegCloseKey(handle);
}

// Opens a key for reading. Returns 0 if the key is missing.
inline platform::Handle RawOpen(platform::Handle root, const std::string& key) {
    platform::Handle handle = 0;
    platform::RegOpenKeyExA(root, key, 0, platform::KeyQueryValue, handle);
    return handle;
}

inline bool RawKeyExists(platform::Handle root, const std::string& key) {
    return platform::RegCloseKey(RawOpen(root, key)) == platform::StatusSuccess;
}

inline std::optional<RawData> RawValue(platform::Handle root, const std::string& key, const std::string& name) {
    const platform::Handle handle = RawOpen(root, key);
    RawData data{0, std::string(4096, '\0')};
    auto size = static_cast<std::uint32_t>(data.bytes.size());
    const platform::Status status = platform::RegQueryValueExA(handle, name, data.type, data.bytes, size);
    platform::RegCloseKey(handle);
    data.bytes.resize(size);
    return status == platform::StatusSuccess ? std::optional(data) : std::nullopt;
}

// Adds a product to the Uninstall key in HKEY_LOCAL_MACHINE.
inline void RawProductAdd(const std::string& subKey, const std::string& displayName, const std::string& unInstallString,
                          const RawData& version = RawNumber(1), const std::string& installLocation = {}) {
    for (const auto& [name, data] : {std::pair("DisplayName", RawText(displayName)),
                                     {"UninstallString", RawText(unInstallString)},
                                     {"InstallLocation", RawText(installLocation)},
                                     {"Version", version}}) {
        RawValueSet(platform::KeyLocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + subKey,
                    name, data);
    }
}
