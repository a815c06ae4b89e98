#include "common/Text.h"

Text DecimalText(std::int32_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

Text HexText(std::uint32_t number) {
    constexpr TextView digits = u"0123456789ABCDEF";
    Text text;
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += digits[(number >> shift) & 0xF];
    }
    return text;
}

Text Trim(const Text& text, TextView characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == Text::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
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
