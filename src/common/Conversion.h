#pragma once

#include <cstdint>

#include "common/Text.h"
#include "common/Variant.h"

// The general tests and conversions of values, under the user's regional settings.

// True for a number, and for a text that reads as one. A text beyond the signed 32-bit range still reads as a number.
bool IsNumeric(const Variant& value);

// The value as a signed 32-bit number; a fraction rounds to the nearest, a tie to the even one. Raises the overflow
// error (6) beyond 32 bits and the type mismatch (13) for what is no number.
std::int32_t LongFrom(const Variant& value);

// The value's text: a text as it is, a number in decimal digits, nothing for the kinds that hold no value.
Text TextFrom(const Variant& value);
