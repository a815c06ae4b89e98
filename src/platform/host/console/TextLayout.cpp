#include "platform/host/console/TextLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/host/Unicode.h"

namespace platform::host {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array<Range, 8> Joining{{{0x0300, 0x036F},
                                        {0x0483, 0x0489},
                                        {0x0591, 0x05BD},
                                        {0x200B, 0x200F},
                                        {0x202A, 0x202E},
                                        {0x20D0, 0x20F0},
                                        {0xFE00, 0xFE0F},
                                        {0xFE20, 0xFE2F}}};

constexpr std::array<Range, 11> Wide{{{0x1100, 0x115F},
                                      {0x2E80, 0x303E},
                                      {0x3041, 0xA4CF},
                                      {0xAC00, 0xD7A3},
                                      {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F},
                                      {0xFF00, 0xFF60},
                                      {0xFFE0, 0xFFE6},
                                      {0x1F300, 0x1F64F},
                                      {0x1F900, 0x1F9FF},
                                      {0x20000, 0x3FFFD}}};

bool Within(const auto& ranges, char32_t codePoint) {
    return std::any_of(ranges.begin(), ranges.end(),
                       [codePoint](const Range& range) { return range.first <= codePoint && codePoint <= range.last; });
}

// How many characters of `text` fit `width` columns, at least one so that breaking always comes to an end.
std::size_t FittingLength(std::u32string_view text, int width) {
    int used = 0;
    for (std::size_t length = 0; length < text.size(); ++length) {
        used += DisplayWidth(text[length]);
        if (used > width && length > 0) {
            return length;
        }
    }
    return text.size();
}

// Breaks one line; the blanks at a break belong to neither part.
void AppendBroken(std::vector<std::u32string>& lines, std::u32string_view line, int width) {
    for (;;) {
        const std::size_t fitting = FittingLength(line, width);
        if (fitting == line.size()) {
            lines.emplace_back(line);
            return;
        }
        const std::size_t wordStart = line.find_first_not_of(U' ');
        std::size_t end = line[fitting] == U' ' ? fitting : line.rfind(U' ', fitting);
        if (end == std::u32string_view::npos || end < wordStart) {
            end = fitting;
        }
        const std::size_t last = line.find_last_not_of(U' ', end - 1);
        lines.emplace_back(line.substr(0, last == std::u32string_view::npos ? 0 : last + 1));
        const std::size_t next = line.find_first_not_of(U' ', end);
        if (next == std::u32string_view::npos) {
            return;
        }
        line.remove_prefix(next);
    }
}

}  // namespace

int DisplayWidth(char32_t codePoint) {
    if (Within(Joining, codePoint)) {
        return 0;
    }
    return Within(Wide, codePoint) ? 2 : 1;
}

int DisplayWidth(std::u32string_view text) {
    int width = 0;
    for (const char32_t codePoint : text) {
        width += DisplayWidth(codePoint);
    }
    return width;
}

std::u32string Printable(std::u16string_view text) {
    std::u32string printable = CodePoints(text);
    for (char32_t& codePoint : printable) {
        if (codePoint == U'\t') {
            codePoint = U' ';
        } else if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0)) {
            codePoint = 0xFFFD;
        }
    }
    return printable;
}

std::vector<std::u32string> WrappedLines(std::u16string_view text, int width) {
    std::vector<std::u32string> lines;
    for (;;) {
        const std::size_t end = text.find_first_of(u"\r\n");
        AppendBroken(lines, Printable(text.substr(0, end)), std::max(width, 1));
        if (end == std::u16string_view::npos) {
            return lines;
        }
        text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
    }
}

std::u32string Shortened(std::u32string_view text, int width) {
    if (DisplayWidth(text) <= width) {
        return std::u32string(text);
    }
    if (width < 2) {
        return {};
    }
    return std::u32string(text.substr(0, FittingLength(text, width - 1))) + U'…';
}

}  // namespace platform::host
