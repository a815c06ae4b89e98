#include "common/Text.h"

#include <algorithm>

namespace {

char16_t LowerCase(char16_t character) {
    const auto within = [character](char16_t first, char16_t last) { return character >= first && character <= last; };
    if (within(u'A', u'Z') || (within(u'À', u'Þ') && character != u'×')) {
        return static_cast<char16_t>(character + 0x20);
    }
    switch (character) {
        case u'Š':
            return u'š';
        case u'Œ':
            return u'œ';
        case u'Ž':
            return u'ž';
        case u'Ÿ':
            return u'ÿ';
        default:
            return character;
    }
}

}  // namespace

Text DecimalText(std::int32_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

Text Trim(const Text& text) {
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == Text::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

Text LowerCase(const Text& text) {
    Text lower = text;
    std::ranges::transform(lower, lower.begin(), [](char16_t character) { return LowerCase(character); });
    return lower;
}

std::vector<Text> Split(const Text& text, char16_t separator) {
    std::vector<Text> pieces;
    if (text.empty()) {
        return pieces;
    }
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != Text::npos; end = text.find(separator, start)) {
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    pieces.push_back(text.substr(start));
    return pieces;
}
