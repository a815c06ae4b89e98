#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/RegistryCalls.h"

// The registry as the system's own calls see it, beside the classes under test.

struct RawData {
    std::uint32_t type;
    std::string bytes;
    bool operator==(const RawData&) const = default;
};

// The four bytes of a number, in the order in which the processor keeps them too.
RawData RawNumber(std::uint32_t number);
// A text with its terminator.
RawData RawText(const std::string& text);

void RawValueSet(platform::Handle root, const std::string& key, const std::string& name, const RawData& data);
std::optional<RawData> RawValue(platform::Handle root, const std::string& key, const std::string& name);
bool RawKeyExists(platform::Handle root, const std::string& key);
std::vector<std::string> RawValueNames(platform::Handle root, const std::string& key);
