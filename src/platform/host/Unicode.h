#pragma once

#include <string>

// Outside the program, text is UTF-8. FromUtf8 treats invalid UTF-8 as text in the 8-bit code page, which older files
// and names use.
namespace platform::host {

std::u16string FromUtf8(const std::string& bytes);
std::string ToUtf8(const std::u16string& text);

}  // namespace platform::host
