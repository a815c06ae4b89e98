#pragma once

#include <cstdint>
#include <string>

namespace platform::host {

// Returns the default value of a key below HKEY_CLASSES_ROOT, with the environment variables of a RegExpandSz expanded.
// Returns an empty string if the value is missing or isn't a string.
std::string ClassText(const std::string& key);

// Returns a named RegDword of a key below HKEY_CLASSES_ROOT, or 0 if it is missing or has another type.
std::uint32_t ClassNumber(const std::string& key, const std::string& name);

}  // namespace platform::host
