#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

namespace platform::host {

// Reads the default value of a key below HKEY_CLASSES_ROOT, expanding environment variables if it is a RegExpandSz.
// Returns 2 if the value is missing or isn't a string. On any failure, sets `text` to an empty string.
Status ClassText(const std::string& key, std::string& text);

// Returns a named RegDword value of a key below HKEY_CLASSES_ROOT, or 0 if it is missing or has another type.
std::uint32_t ClassNumber(const std::string& key, const std::string& name);

}  // namespace platform::host
