#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/RegistryCalls.h"

// Accesses the registry through system calls, bypassing the classes under test.

struct RawData {
    std::uint32_t type;
    std::string bytes;
    bool operator==(const RawData&) const = default;
};

// Returns a RegDword.
RawData RawNumber(std::uint32_t number);
// Returns a RegSz, including the terminator.
RawData RawText(const std::string& text);

void RawValueSet(platform::Handle root, const std::string& key, const std::string& name, const RawData& data);
std::optional<RawData> RawValue(platform::Handle root, const std::string& key, const std::string& name);
bool RawKeyExists(platform::Handle root, const std::string& key);
std::vector<std::string> RawValueNames(platform::Handle root, const std::string& key);
