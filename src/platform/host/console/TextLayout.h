#pragma once

#include <string>
#include <string_view>
#include <vector>

// Text measured and broken by the columns that a terminal gives its characters.
namespace platform::host {

// 0 for a mark that joins the character before it, 2 for a wide character of East Asia, otherwise 1.
int DisplayWidth(char32_t codePoint);
int DisplayWidth(std::u32string_view text);

// The text as it may be drawn: a tab is a blank, and no other control character reaches the terminal.
std::u32string Printable(std::u16string_view text);

// The text's lines (CR LF, LF and CR part them), each broken at blanks, or within a word that is too long, into lines
// of at most `width` columns. A width below 1 counts as 1.
std::vector<std::u32string> WrappedLines(std::u16string_view text, int width);

// The text, or as much of it as fits `width` columns with an ellipsis behind it.
std::u32string Shortened(std::u32string_view text, int width);

}  // namespace platform::host
