#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "platform/Regional.h"

// Outside the program, text is UTF-8.
namespace platform::host {

// Treats invalid UTF-8 as text in the 8-bit code page, which older files and names use.
inline std::u16string FromUtf8(const std::string& bytes) {
    try {
        return std::filesystem::path(bytes).u16string();
    } catch (const std::system_error&) {
        return TextFromAnsi(bytes);
    }
}

inline std::string ToUtf8(const std::u16string& text) {
    return std::filesystem::path(text).native();
}

}  // namespace platform::host
