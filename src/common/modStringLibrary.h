#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"

// String functions with defined results for out-of-range positions. Positions are 1-based. Lengths, positions and
// widths are signed 16-bit: a string longer than 32767 characters, or a position plus width above that, raises 6
// (overflow) in every function that needs the length. Comparisons are binary. Only the first character of a pad is
// used; if it is missing or empty, a space is used.

// Returns `length` characters starting at `start`, padded where the range extends past either end of the string.
// Without `length`, returns everything from `start` to the end.
Text MidFixed(const Text& text, std::int16_t start, std::optional<std::int16_t> length = {},
              const std::optional<Text>& pad = {});

// Removes `length` characters starting at `start`. The range may extend past either end of the string. Without
// `length`, removes everything from `start` to the end.
Text DeleteChars(const Text& text, std::int16_t start, std::optional<std::int16_t> length = {});

// Inserts `insertion` before the character at `position`, or appends it if `position` is one past the end. Returns the
// string unchanged for any other out-of-range position.
Text InsertText(const Text& text, const Text& insertion, std::int16_t position);

// Truncates or pads the string on the right to exactly `width` characters.
Text FixLeft(const Text& text, std::int16_t width, const std::optional<Text>& pad = {});

// Trims the string, then truncates or pads it on the left to exactly `width` characters (default: its length before
// trimming).
Text FixRight(const Text& text, std::optional<std::int16_t> width = {}, const std::optional<Text>& pad = {});

// Returns the position of the first character that is in `chars`, or 0.
std::int16_t FindAnyChar(const Text& text, const Text& chars);

// Like FindAnyChar, but finds a character that isn't in `chars` if `negate` is true, and searches from the end if
// `backward` is true.
std::int16_t ScanChars(const Text& text, const Text& chars, std::optional<bool> negate = {},
                       std::optional<bool> backward = {});

// Replaces each character in `fromChars` with the one at the same position in `toChars`; the longer of the two is
// truncated to the length of the shorter.
Text TranslateChars(const Text& text, const Text& fromChars, const Text& toChars);

// Removes the accents of lowercase letters.
Text FoldAccents(const Text& text);

// Replaces the six German umlauts with two letters each.
Text ExpandUmlauts(const Text& text);

// Replaces all occurrences of `find`, from left to right. Doesn't search the inserted text again.
Text ReplaceAll(const Text& text, const Text& find, const Text& replacement);

// Returns the last `width` digits of the number, padded with zeros on the left. A minus sign counts as a digit.
Text ZeroPadInteger(std::int16_t number, std::int16_t width);
Text ZeroPadLong(std::int32_t number, std::int16_t width);

// Returns a path's directory with its trailing backslash, or an empty string if the path has no directory. If `path`
// ends in ":", appends a backslash to the caller's variable.
Text PathDirectory(Text& path);

// Returns the part of a path after the last backslash.
Text PathFileName(const Text& path);

// Trims both parts and joins them with a backslash, after removing one leading backslash from `file`. An empty
// `directory` means the root.
Text PathCombine(const Text& directory, const Text& file);

// Encloses the string in `quote`s (default: double quotes) and doubles those inside it.
Text QuoteText(const Text& text, const std::optional<Text>& quote = {});
