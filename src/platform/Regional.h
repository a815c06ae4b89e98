#pragma once

#include <cstdint>
#include <string>

#include "platform/Handle.h"

// The user's regional settings and the system's 8-bit code page.
namespace platform {

inline constexpr std::uint32_t CodePageUtf8 = 65001;  // CP_UTF8

// Returns the number of the system's 8-bit code page.
std::uint32_t GetACP();

// Converts strings to the code page and back. Characters not in the code page become "?".
std::string AnsiFromText(const std::u16string& text);
std::u16string TextFromAnsi(const std::string& bytes);

// Converts a string to uppercase, character by character, so that strings that differ only in case become equal.
std::u16string CharUpperW(const std::u16string& text);

inline constexpr Status DispTypeMismatch = static_cast<Status>(0x80020005U);  // DISP_E_TYPEMISMATCH: not a number
inline constexpr Status DispOverflow = static_cast<Status>(0x8002000AU);      // DISP_E_OVERFLOW: more than 32 bits

// Converts a string to a number, using the user's regional settings. Accepts decimal and thousands separators, an
// exponent, the prefixes "&H" and "&O" and, around the digits, spaces, a sign, a currency symbol and parentheses (for a
// negative number). Rounds to the nearest integer, ties to even. On failure leaves `number` unchanged.
Status VarI4FromStr(const std::u16string& text, std::int32_t& number);

// Returns the default text form of a date value (see Now): "16.12.2017 10:16:40" on a German system. At midnight,
// returns only the date.
std::u16string VarBstrFromDate(double date);

}  // namespace platform
