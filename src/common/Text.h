#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A string of UTF-16 code units.
using Text = std::u16string;

// A view of a string that is owned elsewhere.
using TextView = std::u16string_view;

// Returns the number in decimal digits, with a leading "-" if it is negative.
Text DecimalText(std::int32_t number);

// Returns the number as 8 uppercase hexadecimal digits.
Text HexText(std::uint32_t number);

// Strips spaces (only U+0020), or any of `characters` if given, from both ends.
Text Trim(const Text& text, TextView characters = u" ");

// Splits a string at each `separator`. Returns no pieces for an empty string.
std::vector<Text> Split(const Text& text, char16_t separator);
