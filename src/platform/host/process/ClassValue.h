#pragma once

#include <cstdint>
#include <string>

namespace platform::host {

// Values of a key below HKEY_CLASSES_ROOT: its unnamed text, and a named number (REG_DWORD). The empty text or 0 where
// there is none of that type.
std::string ClassText(const std::string& key);
std::uint32_t ClassNumber(const std::string& key, const std::string& name);

}  // namespace platform::host
