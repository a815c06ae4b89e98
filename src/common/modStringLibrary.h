#pragma once

#include <cstdint>
#include <optional>

#include "common/Text.h"

// Text helpers with bounds: where a plain cut, search or replacement fails on a position outside the text, these give a
// defined result. Positions count from 1. Lengths, positions and widths are signed 16-bit numbers: a text of more than
// 32767 characters, and a sum of position and width beyond that, raise the overflow error (6) in every helper that
// needs the length. Comparisons are binary. A pad counts with its first character alone; omitted or empty it is a
// blank.

// Cuts `length` characters from `start` on, as if the text stood in an endless row of pad characters. Omitted, `length`
// reaches to the end of the text.
Text MidFixed(const Text& text, std::int16_t start, std::optional<std::int16_t> length = {},
              const std::optional<Text>& pad = {});

// Removes a range, clipped to the text; positions below 1 use up the length as if they existed. Omitted, `length`
// reaches to the end of the text.
Text DeleteChars(const Text& text, std::int16_t start, std::optional<std::int16_t> length = {});

// Puts `insertion` before the character at `position`; one behind the last appends. Any other position outside the text
// gives the text unchanged.
Text InsertText(const Text& text, const Text& insertion, std::int16_t position);

// The text at the left of a field of exactly `width` characters.
Text FixLeft(const Text& text, std::int16_t width, const std::optional<Text>& pad = {});

// The text, trimmed of blanks, at the right of a field of exactly `width` characters, by default as wide as the text
// before trimming. A longer text keeps its last characters.
Text FixRight(const Text& text, std::optional<std::int16_t> width = {}, const std::optional<Text>& pad = {});

// The position of the first character that is in `chars`, 0 when there is none.
std::int16_t FindAnyChar(const Text& text, const Text& chars);

// The same, with `negate` for a character that is not in `chars`, with `backward` searched from the end.
std::int16_t ScanChars(const Text& text, const Text& chars, std::optional<bool> negate = {},
                       std::optional<bool> backward = {});

// Replaces each character that stands in `fromChars` by the one at the same place of `toChars`; the longer of the two
// is cut to the shorter.
Text TranslateChars(const Text& text, const Text& fromChars, const Text& toChars);

// Accented lower-case letters without their accents.
Text FoldAccents(const Text& text);

// The six German umlauts as two letters each.
Text ExpandUmlauts(const Text& text);

// Every occurrence of `find`, from left to right and without overlap; inserted text is not searched again.
Text ReplaceAll(const Text& text, const Text& find, const Text& replacement);

// The last `width` digits of the number, filled with zeros on the left; a minus sign counts as a digit.
Text ZeroPadInteger(std::int16_t number, std::int16_t width);
Text ZeroPadLong(std::int32_t number, std::int16_t width);

// The directory of a path with its trailing backslash, the empty text when there is none. A `path` that ends in ":" is
// given a backslash, in the caller's variable.
Text PathDirectory(Text& path);

// What stands behind the last backslash.
Text PathFileName(const Text& path);

// Directory and file, trimmed of blanks, with a backslash between them. One leading backslash of `file` is taken off;
// an empty directory is the root.
Text PathCombine(const Text& directory, const Text& file);

// The text between two `quote`s, by default double quotes, with those inside it doubled.
Text QuoteText(const Text& text, const std::optional<Text>& quote = {});
