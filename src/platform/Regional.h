#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

// The user's regional settings and the system's 8-bit code page.
namespace platform {

// Text in the code page, and back. A character that the code page has not becomes "?".
std::string AnsiFromText(const std::u16string& text);
std::u16string TextFromAnsi(const std::string& bytes);

// The text in capital letters, each letter by itself: texts that differ in case alone become equal.
std::u16string CharUpperW(const std::u16string& text);

inline constexpr Status DispTypeMismatch = static_cast<Status>(0x80020005U);  // DISP_E_TYPEMISMATCH: no number
inline constexpr Status DispOverflow = static_cast<Status>(0x8002000AU);      // DISP_E_OVERFLOW: beyond 32 bits

// The number that `text` reads as under the user's regional settings: blanks around it, a sign, the settings' decimal
// and thousands separators, an exponent, "&H" and "&O". A fraction rounds to the nearest whole number, a tie to the
// even one.
Status VarI4FromStr(const std::u16string& text, std::int32_t& number);

// The default text form of a date value (Now): on a German system "16.12.2017 10:16:40", and the date alone at
// midnight.
std::u16string VarBstrFromDate(double date);

}  // namespace platform
