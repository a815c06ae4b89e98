#include "platform/host/Unicode.h"

#include <array>
#include <cstddef>

namespace platform::host {

namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// How many bytes follow a lead byte, and what the first of them may be: the narrower ranges shut out overlong forms,
// surrogates and what lies beyond U+10FFFF.
struct Sequence {
    unsigned following;
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
};

Sequence SequenceOf(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {1};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return {2, static_cast<unsigned char>(lead == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(lead == 0xED ? 0x9F : 0xBF)};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return {3, static_cast<unsigned char>(lead == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0};
}

// Takes one character off the front; a broken sequence ends before the first byte that does not fit.
char32_t TakeUtf8(std::string_view& bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    if (lead < 0x80) {
        return lead;
    }
    Sequence sequence = SequenceOf(lead);
    if (sequence.following == 0) {
        return Replacement;
    }
    char32_t codePoint = lead & (0x3FU >> sequence.following);
    for (; sequence.following > 0; --sequence.following) {
        const unsigned char next = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front());
        if (next < sequence.lowest || next > sequence.highest) {
            return Replacement;
        }
        codePoint = codePoint << 6U | (next & 0x3FU);
        bytes.remove_prefix(1);
        sequence.lowest = 0x80;
        sequence.highest = 0xBF;
    }
    return codePoint;
}

char32_t TakeUtf16(std::u16string_view& text) {
    const char32_t unit = text.front();
    text.remove_prefix(1);
    if (IsHighSurrogate(unit) && !text.empty() && IsLowSurrogate(text.front())) {
        const char32_t low = text.front();
        text.remove_prefix(1);
        return 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00);
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? Replacement : unit;
}

}  // namespace

std::u16string FromUtf8(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const char32_t codePoint = TakeUtf8(bytes);
        if (codePoint < 0x10000) {
            text += static_cast<char16_t>(codePoint);
        } else {
            text += static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10U));
            text += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FFU));
        }
    }
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        AppendUtf8(bytes, TakeUtf16(text));
    }
    return bytes;
}

std::u32string CodePoints(std::u16string_view text) {
    std::u32string codePoints;
    while (!text.empty()) {
        codePoints += TakeUtf16(text);
    }
    return codePoints;
}

void AppendUtf8(std::string& bytes, char32_t codePoint) {
    if (codePoint < 0x80) {
        bytes += static_cast<char>(codePoint);
        return;
    }
    const unsigned following = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
    constexpr std::array<unsigned, 4> leadMarks{0, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(leadMarks.at(following) | codePoint >> (6 * following));
    for (unsigned left = following; left > 0; --left) {
        bytes += static_cast<char>(0x80U | (codePoint >> (6 * (left - 1)) & 0x3FU));
    }
}

}  // namespace platform::host
