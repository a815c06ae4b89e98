// German regional settings.
#include "platform/Regional.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>

#include "platform/host/DateValue.h"

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

// A number digit by digit, because a tie must be told from its neighbours however long the text is.
struct Decimal {
    std::string digits;
    std::int64_t point;  // the number of digits before the decimal point, which may stand outside of them
};

// The number of an exponent's text: a letter, a sign, digits.
std::optional<std::int64_t> ReadExponent(std::string_view text) {
    text.remove_prefix(1);
    const bool minus = text.starts_with('-');
    text.remove_prefix(minus || text.starts_with('+') ? 1 : 0);
    std::int32_t exponent = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, exponent);
    if (text.empty() || !IsDigit(text.front()) || stop != end) {
        return {};
    }
    if (error == std::errc::result_out_of_range) {
        exponent = std::numeric_limits<std::int32_t>::max();  // more than any text has digits to make up for
    }
    return minus ? -std::int64_t{exponent} : exponent;
}

std::optional<Decimal> ReadDecimal(std::string_view text) {
    Decimal decimal;
    std::optional<std::size_t> point;
    std::size_t place = 0;
    for (; place < text.size(); ++place) {
        if (IsDigit(text[place])) {
            decimal.digits += text[place];
        } else if (text[place] == DecimalSeparator && !point) {
            point = decimal.digits.size();
        } else if (text[place] != ThousandsSeparator || point || decimal.digits.empty()) {
            break;
        }
    }
    decimal.point = static_cast<std::int64_t>(point.value_or(decimal.digits.size()));
    if (place < text.size()) {
        const bool marked = text[place] == 'e' || text[place] == 'E';
        const std::optional<std::int64_t> exponent = marked ? ReadExponent(text.substr(place)) : std::nullopt;
        if (!exponent) {
            return {};
        }
        decimal.point += *exponent;
    }
    return decimal.digits.empty() ? std::nullopt : std::optional(decimal);
}

Status Rounded(Decimal decimal, bool negative, std::int32_t& number) {
    constexpr std::int64_t MostDigits = 10;  // of a 32-bit number
    const std::size_t zeros = std::min(decimal.digits.find_first_not_of('0'), decimal.digits.size());
    decimal.digits.erase(0, zeros);
    decimal.point -= static_cast<std::int64_t>(zeros);
    if (decimal.digits.empty() || decimal.point < 0) {
        number = 0;
        return StatusSuccess;
    }
    if (decimal.point > MostDigits) {
        return DispOverflow;
    }
    const auto wholeDigits = static_cast<std::size_t>(decimal.point);
    decimal.digits.resize(std::max(wholeDigits, decimal.digits.size()), '0');
    std::int64_t value = 0;
    std::from_chars(decimal.digits.data(), decimal.digits.data() + wholeDigits, value);
    std::string fraction = decimal.digits.substr(wholeDigits);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    if (fraction > "5" || (fraction == "5" && value % 2 != 0)) {
        ++value;
    }
    value = negative ? -value : value;
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return DispOverflow;
    }
    number = static_cast<std::int32_t>(value);
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
    const std::optional<Decimal> decimal = AreSound(affixes) ? ReadDecimal(body) : std::nullopt;
    const bool negative = affixes.find_first_of("-(") != std::string::npos;
    return decimal ? Rounded(*decimal, negative, number) : DispTypeMismatch;
}

std::u16string VarBstrFromDate(double date) {
    using namespace std::chrono;
    const seconds sinceStart(std::llround(date * host::SecondsPerDay));
    const sys_days day = host::DateValueStart + floor<days>(sinceStart);
    const year_month_day calendar(day);
    const hh_mm_ss time(sinceStart - floor<days>(sinceStart));
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02u.%02u.%04d %02d:%02d:%02d", static_cast<unsigned>(calendar.day()),
                  static_cast<unsigned>(calendar.month()), static_cast<int>(calendar.year()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    const std::string_view text(buffer.data());
    const bool midnight = time.to_duration() == seconds(0);
    return TextFromAnsi(std::string(midnight ? text.substr(0, text.find(' ')) : text));
}

}  // namespace platform
