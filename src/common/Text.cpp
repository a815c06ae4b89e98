#include "common/Text.h"

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
