#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"
#include "common/Variant.h"

// Tests and conversions of variants, under the user's regional settings.

// Returns the number in a variant of an integer kind, or nothing for any other kind.
std::optional<std::int32_t> WholeNumber(const Variant& value);

// True for an integer and for a string that is a number, even one that exceeds 32 bits.
bool IsNumeric(const Variant& value);

// Converts an integer or a numeric string to 32 bits. Rounds to the nearest whole number, ties to even. Raises 6
// (overflow) if the number exceeds 32 bits, 13 (type mismatch) for any other value.
std::int32_t LongFrom(const Variant& value);

// Converts the number to 16 bits, rounding in the same way. Raises 6 (overflow) if the number exceeds 16 bits.
std::int16_t IntegerFrom(double number);

// Returns a string unchanged, an integer in decimal digits, or a date in its default form. Returns an empty string for
// any other value.
Text TextFrom(const Variant& value);
