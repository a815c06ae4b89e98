// Numbers under German regional settings.
#include "platform/Regional.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace platform {

namespace {

constexpr char DecimalSeparator = ',';
constexpr char ThousandsSeparator = '.';
constexpr char CurrencySign = '\x80';  // the euro's in the code page
constexpr std::string_view Blanks = " \t\n\v\f\r";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Takes signs, brackets, currency sign and blanks off both ends of `text`, and gives them without the blanks. A bracket
// opens before the number and closes behind it.
std::string TakeAffixes(std::string_view& text) {
    const std::string around = std::string(Blanks) + "+-" + CurrencySign;
    const std::size_t first = std::min(text.find_first_not_of(around + '('), text.size());
    const std::size_t end = std::max(text.find_last_not_of(around + ')') + 1, first);
    std::string affixes(text.substr(0, first));
    affixes += text.substr(end);
    text = text.substr(first, end - first);
    std::erase_if(affixes, [](char character) { return Blanks.find(character) != std::string_view::npos; });
    return affixes;
}

// One sign or one pair of brackets, and one currency sign, in any order.
bool AreSound(const std::string& affixes) {
    const auto count = [&](char character) { return std::ranges::count(affixes, character); };
    return count('+') + count('-') + count('(') <= 1 && count('(') == count(')') && count(CurrencySign) <= 1;
}

// "&H" and "&O" tell the 32 bits themselves, the sign bit included.
Status ReadBased(std::string_view text, std::int32_t& number) {
    const bool hexadecimal = text.starts_with("&H") || text.starts_with("&h");
    if (!hexadecimal && !text.starts_with("&O") && !text.starts_with("&o")) {
        return DispTypeMismatch;
    }
    std::uint32_t bits = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 2, end, bits, hexadecimal ? 16 : 8);
    if (error == std::errc::invalid_argument || stop != end) {
        return DispTypeMismatch;
    }
    if (error == std::errc::result_out_of_range) {
        return DispOverflow;
    }
    number = static_cast<std::int32_t>(bits);
    return StatusSuccess;
}

// The number of a text: digits, with thousands separators among those before the decimal separator, and an exponent.
std::optional<double> ReadDecimal(std::string_view text) {
    std::string plain;  // as the library reads it
    std::size_t place = 0;
    bool hasDigit = false;
    bool hasPoint = false;
    for (; place < text.size(); ++place) {
        const char character = text[place];
        if (IsDigit(character)) {
            plain += character;
            hasDigit = true;
        } else if (character == DecimalSeparator && !hasPoint) {
            plain += '.';
            hasPoint = true;
        } else if (character != ThousandsSeparator || hasPoint || !hasDigit) {
            break;
        }
    }
    plain += text.substr(place);
    double number = 0;
    const char* const end = plain.data() + plain.size();
    const auto [stop, error] = std::from_chars(plain.data(), end, number);
    if (!hasDigit || stop != end) {
        return {};
    }
    if (error == std::errc::result_out_of_range) {
        return plain.find('-') != std::string::npos ? 0 : std::numeric_limits<double>::infinity();
    }
    return number;
}

// To the nearest whole number, a tie to the even one.
Status Round(double value, std::int32_t& number) {
    const double whole = std::nearbyint(value);
    if (whole < std::numeric_limits<std::int32_t>::min() || whole > std::numeric_limits<std::int32_t>::max()) {
        return DispOverflow;
    }
    number = static_cast<std::int32_t>(whole);
    return StatusSuccess;
}

}  // namespace

Status VarI4FromStr(const std::u16string& text, std::int32_t& number) {
    // The system's call takes a text that a null character ends.
    const std::string bytes = AnsiFromText(text.substr(0, text.find(u'\0')));
    std::string_view body = bytes;
    const std::string affixes = TakeAffixes(body);
    if (body.starts_with('&')) {
        return affixes.empty() ? ReadBased(body, number) : DispTypeMismatch;
    }
    const std::optional<double> value = AreSound(affixes) ? ReadDecimal(body) : std::nullopt;
    const bool negative = affixes.find_first_of("-(") != std::string::npos;
    return value ? Round(negative ? -*value : *value, number) : DispTypeMismatch;
}

}  // namespace platform
