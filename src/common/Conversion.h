#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "common/Text.h"
#include "common/Variant.h"

// The general tests and conversions of values, under the user's regional settings.

// The number of a variant of one of the whole number kinds; nothing for any other kind.
std::optional<std::int32_t> WholeNumber(const Variant& value);

// True for a whole number, and for a text that reads as a number, also as one beyond the signed 32-bit range.
bool IsNumeric(const Variant& value);

// A whole number, or what a text reads as, as a signed 32-bit number; a fraction rounds to the nearest, a tie to the
// even one. Raises the overflow error (6) beyond 32 bits and the type mismatch (13) for any other value.
std::int32_t LongFrom(const Variant& value);

// The number as a signed 16-bit one, rounded in the same way. Raises the overflow error (6) beyond 16 bits.
std::int16_t IntegerFrom(double number);

// A number of 32 bits from its four bytes, the lowest first.
std::uint32_t NumberFromBytes(std::span<const char, 4> bytes);

// A text as it is, a whole number in decimal digits, a date in its default form; the empty text for any other value.
Text TextFrom(const Variant& value);
