#pragma once

#include <string>
#include <string_view>

// Text outside the program is UTF-8, text inside it UTF-16. What is no text in the one form becomes U+FFFD in the
// other, so that no conversion fails.
namespace platform::host {

std::u16string FromUtf8(std::string_view bytes);
std::string ToUtf8(std::u16string_view text);

// How names are compared on the machine: without regard to case.
bool IsSameName(std::u16string_view one, std::u16string_view other);

}  // namespace platform::host
