#include "common/modStringLibrary.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "common/Error.h"

namespace {

// Converts the number to 16 bits. Raises 6 (overflow) if it doesn't fit.
std::int16_t ToInt16(std::int64_t number) {
    if (number < std::numeric_limits<std::int16_t>::min() || number > std::numeric_limits<std::int16_t>::max()) {
        Raise(RuntimeError::Overflow);
    }
    return static_cast<std::int16_t>(number);
}

std::int16_t Length(const Text& text) {
    return ToInt16(static_cast<std::int64_t>(text.size()));
}

// Returns the width from `start` to the end of a string of `length` characters.
std::int16_t WidthToEnd(std::int16_t length, std::int16_t start) {
    return ToInt16(ToInt16(length - start) + 1);
}

// Returns the last position of a range. Adds before subtracting, because the sum must fit in 16 bits too.
std::int16_t LastPosition(std::int16_t start, std::int16_t width) {
    return ToInt16(ToInt16(start + width) - 1);
}

char16_t PadCharacter(const std::optional<Text>& pad) {
    return pad && !pad->empty() ? pad->front() : u' ';
}

Text Repeat(std::int16_t width, char16_t character) {
    return Text(static_cast<std::size_t>(width), character);
}

Text FromPosition(const Text& text, std::int16_t start) {
    return text.substr(static_cast<std::size_t>(start - 1));
}

}  // namespace

Text MidFixed(const Text& text, std::int16_t start, std::optional<std::int16_t> length,
              const std::optional<Text>& pad) {
    const std::int16_t n = Length(text);
    const std::int16_t width = length ? *length : WidthToEnd(n, start);
    if (width < 1) {
        return {};
    }
    if (LastPosition(start, width) < 1 || start > n) {
        return Repeat(width, PadCharacter(pad));
    }
    if (start >= 1) {
        return FixLeft(FromPosition(text, start), width, pad);
    }
    return FixLeft(Repeat(ToInt16(1 - start), PadCharacter(pad)) + text, width, pad);
}

Text DeleteChars(const Text& text, std::int16_t start, std::optional<std::int16_t> length) {
    if (text.empty()) {
        return {};
    }
    const std::int16_t n = Length(text);
    const std::int16_t width = length ? *length : WidthToEnd(n, start);
    const std::int16_t last = std::min(LastPosition(start, width), n);
    if (width < 1 || start > n || last < 1) {
        return text;
    }
    const std::int16_t first = std::max<std::int16_t>(start, 1);
    return text.substr(0, static_cast<std::size_t>(first - 1)) + text.substr(static_cast<std::size_t>(last));
}

Text InsertText(const Text& text, const Text& insertion, std::int16_t position) {
    const std::int16_t n = Length(text);
    if (insertion.empty() || position < 1 || position > ToInt16(n + 1)) {
        return text;
    }
    return text.substr(0, static_cast<std::size_t>(position - 1)) + insertion + FromPosition(text, position);
}

Text FixLeft(const Text& text, std::int16_t width, const std::optional<Text>& pad) {
    if (width <= 0) {
        return {};
    }
    const std::int16_t n = Length(text);
    if (n >= width) {
        return text.substr(0, static_cast<std::size_t>(width));
    }
    return text + Repeat(static_cast<std::int16_t>(width - n), PadCharacter(pad));
}

Text FixRight(const Text& text, std::optional<std::int16_t> width, const std::optional<Text>& pad) {
    const std::int16_t field = width ? *width : Length(text);
    if (field <= 0) {
        return {};
    }
    const Text trimmed = Trim(text);
    const std::int16_t n = Length(trimmed);
    if (n >= field) {
        return trimmed.substr(static_cast<std::size_t>(n - field));
    }
    return Repeat(static_cast<std::int16_t>(field - n), PadCharacter(pad)) + trimmed;
}

std::int16_t FindAnyChar(const Text& text, const Text& chars) {
    return ScanChars(text, chars, false, false);
}

std::int16_t ScanChars(const Text& text, const Text& chars, std::optional<bool> negate, std::optional<bool> backward) {
    const bool outside = negate.value_or(false);
    const bool fromEnd = backward.value_or(false);
    if (text.empty() || (chars.empty() && !outside)) {
        return 0;
    }
    if (chars.empty() && !fromEnd) {
        return 1;
    }
    Length(text);  // raises 6 (overflow) if the string is too long, even if an early character matches
    const std::size_t found = fromEnd ? (outside ? text.find_last_not_of(chars) : text.find_last_of(chars))
                                      : (outside ? text.find_first_not_of(chars) : text.find_first_of(chars));
    return found == Text::npos ? std::int16_t{0} : ToInt16(static_cast<std::int64_t>(found) + 1);
}

Text TranslateChars(const Text& text, const Text& fromChars, const Text& toChars) {
    if (text.empty() || fromChars.empty() || toChars.empty()) {
        return text;
    }
    Length(text);
    const std::int16_t width = std::min(Length(fromChars), Length(toChars));
    const Text from = fromChars.substr(0, static_cast<std::size_t>(width));
    Text translated = text;
    for (char16_t& character : translated) {
        if (const std::size_t index = from.find(character); index != Text::npos) {
            character = toChars[index];
        }
    }
    return translated;
}

Text FoldAccents(const Text& text) {
    return TranslateChars(text, u"äáãâàåéêëèîïíìôóõòöûùúüñçÿ", u"aaaaaaeeeeiiiiooooouuuuncy");
}

Text ExpandUmlauts(const Text& text) {
    Text expanded = text;
    for (const auto& [umlaut, letters] :
         {std::pair(u"ä", u"ae"), {u"Ä", u"AE"}, {u"ö", u"oe"}, {u"Ö", u"OE"}, {u"ü", u"ue"}, {u"Ü", u"UE"}}) {
        expanded = ReplaceAll(expanded, umlaut, letters);
    }
    return expanded;
}

Text ReplaceAll(const Text& text, const Text& find, const Text& replacement) {
    Length(text);
    if (text.empty() || find.empty()) {
        return text;
    }
    Text replaced = text;
    std::size_t match = replaced.find(find);
    while (match != Text::npos) {
        const std::int16_t position = ToInt16(static_cast<std::int64_t>(match) + 1);
        replaced = InsertText(DeleteChars(replaced, position, Length(find)), replacement, position);
        match = replaced.find(find, static_cast<std::size_t>(ToInt16(position + Length(replacement)) - 1));
    }
    return replaced;
}

Text ZeroPadInteger(std::int16_t number, std::int16_t width) {
    return ZeroPadLong(number, width);
}

Text ZeroPadLong(std::int32_t number, std::int16_t width) {
    return FixRight(DecimalText(number), width, u"0");
}

Text PathDirectory(Text& path) {
    if (path.ends_with(u':')) {
        path += u'\\';
    }
    return path.substr(0, path.rfind(u'\\') + 1);  // without a backslash, npos + 1 is 0
}

Text PathFileName(const Text& path) {
    return path.substr(path.rfind(u'\\') + 1);
}

Text PathCombine(const Text& directory, const Text& file) {
    Text left = Trim(directory);
    if (!left.ends_with(u'\\')) {
        left += u'\\';
    }
    Text right = Trim(file);
    if (right.starts_with(u'\\')) {
        right = DeleteChars(right, 1, 1);
    }
    return left + right;
}

Text QuoteText(const Text& text, const std::optional<Text>& quote) {
    const Text mark = quote.value_or(u"\"");
    return mark + ReplaceAll(text, mark, mark + mark) + mark;
}
