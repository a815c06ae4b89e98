#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A text of 16-bit characters. Positions in it count from 1.
using Text = std::u16string;

// Part of a text that is kept elsewhere; the form of all texts that are known at compile time.
using TextView = std::u16string_view;

// Decimal digits, with a "-" before a negative number.
Text DecimalText(std::int32_t number);

// `text` without the blanks (U+0020 alone), or without any of `characters`, at both its ends.
Text Trim(const Text& text, TextView characters = u" ");

// The pieces between the `separator`s of a text; the empty text has none.
std::vector<Text> Split(const Text& text, char16_t separator);
