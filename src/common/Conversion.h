#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"
#include "common/Variant.h"

// Tests and converts variants, using the user's regional settings.

// Returns the value of an integer variant, or nothing for any other type.
std::optional<std::int32_t> IntegerValue(const Variant& value);

// True if the value is an integer or a numeric string, even if the number exceeds 32 bits.
bool IsNumeric(const Variant& value);

// Converts an integer or a numeric string to a 32-bit integer. Rounds to the nearest integer, ties to even. Raises 6
// (overflow) if the number doesn't fit in 32 bits, 13 (type mismatch) for any other value.
std::int32_t LongFrom(const Variant& value);

// Converts a number to a 16-bit integer, rounding like LongFrom. Raises 6 (overflow) if it doesn't fit.
std::int16_t IntegerFrom(double number);

// Converts a value to a string. Strings are returned unchanged, integers in decimal, dates in the default format.
// Anything else yields an empty string.
Text TextFrom(const Variant& value);
