#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"

// String functions that have a defined result for positions outside the string. Positions count from 1. Lengths,
// positions and widths are signed 16-bit numbers: a string of more than 32767 characters, or a larger sum of position
// and width, raises 6 (overflow) in every function that needs the length. Comparisons are binary. Only the first
// character of a pad is used; a missing or empty pad is a space.

// Returns `length` characters from `start` on, with pad characters in place of those before and after the string.
// Without `length`, returns everything from `start` on.
Text MidFixed(const Text& text, std::int16_t start, std::optional<std::int16_t> length = {},
              const std::optional<Text>& pad = {});

// Removes `length` characters from `start` on, clipped to the string; positions below 1 count as part of the length.
// Without `length`, removes everything from `start` on.
Text DeleteChars(const Text& text, std::int16_t start, std::optional<std::int16_t> length = {});

// Inserts `insertion` before the character at `position`, or appends it at the position after the last character. For
// any other position outside the string, returns the string unchanged.
Text InsertText(const Text& text, const Text& insertion, std::int16_t position);

// Cuts or pads the string on the right to exactly `width` characters.
Text FixLeft(const Text& text, std::int16_t width, const std::optional<Text>& pad = {});

// Trims the string and cuts or pads it on the left to exactly `width` characters, by default its length before
// trimming.
Text FixRight(const Text& text, std::optional<std::int16_t> width = {}, const std::optional<Text>& pad = {});

// Returns the position of the first character that is in `chars`, or 0.
std::int16_t FindAnyChar(const Text& text, const Text& chars);

// Does the same; with `negate` looks for a character that isn't in `chars`, with `backward` searches from the end.
std::int16_t ScanChars(const Text& text, const Text& chars, std::optional<bool> negate = {},
                       std::optional<bool> backward = {});

// Replaces each character in `fromChars` with the one at the same position in `toChars`; the longer of the two is cut
// to the length of the shorter.
Text TranslateChars(const Text& text, const Text& fromChars, const Text& toChars);

// Removes the accents of lowercase letters.
Text FoldAccents(const Text& text);

// Replaces the six German umlauts with two letters each.
Text ExpandUmlauts(const Text& text);

// Replaces all occurrences of `find`, from left to right. Doesn't search the inserted text again.
Text ReplaceAll(const Text& text, const Text& find, const Text& replacement);

// Return the last `width` digits of the number, padded with zeros on the left. A minus sign counts as a digit.
Text ZeroPadInteger(std::int16_t number, std::int16_t width);
Text ZeroPadLong(std::int32_t number, std::int16_t width);

// Returns the directory of a path with its trailing backslash, or an empty string if there is none. If `path` ends in
// ":", appends a backslash to the caller's variable.
Text PathDirectory(Text& path);

// Returns the part of a path after the last backslash.
Text PathFileName(const Text& path);

// Trims directory and file and joins them with a backslash. Removes one leading backslash of `file`. An empty directory
// is the root.
Text PathCombine(const Text& directory, const Text& file);

// Encloses the string in `quote`s (default: double quotes) and doubles those inside it.
Text QuoteText(const Text& text, const std::optional<Text>& quote = {});
