#pragma once

#include <string>

// Text outside the program is UTF-8, text inside it UTF-16. What is no UTF-8 is taken for the code page, in which older
// files and names are written.
namespace platform::host {

std::u16string FromUtf8(const std::string& bytes);
std::string ToUtf8(const std::u16string& text);

// How names are compared on the machine: without regard to case.
bool IsSameName(const std::u16string& one, const std::u16string& other);

}  // namespace platform::host
