// Numbers under German regional settings.
#include "platform/Regional.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string_view>

namespace platform {

namespace {

constexpr const char* Blanks = " \t\n\v\f\r";

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

// The number of a text: digits, with points among those before the comma, and an exponent.
std::optional<double> ReadDecimal(std::string text) {
    if (text.find_first_of("0123456789,") != 0 || text.find_first_not_of("0123456789,.eE+-") != std::string::npos) {
        return {};
    }
    const auto wholeEnd = text.begin() + static_cast<std::ptrdiff_t>(std::min(text.find_first_of(",eE"), text.size()));
    text.erase(std::remove(text.begin(), wholeEnd, '.'), wholeEnd);
    std::ranges::replace(text, ',', '.');
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    return *end == '\0' ? std::optional(number) : std::nullopt;
}

}  // namespace

Status VarI4FromStr(const std::u16string& text, std::int32_t& number) {
    // The system's call takes a text that a null character ends.
    const std::string bytes = AnsiFromText(text.substr(0, text.find(u'\0')));
    const std::size_t first = std::min(bytes.find_first_not_of(Blanks), bytes.size());
    std::string_view body = std::string_view(bytes).substr(first, bytes.find_last_not_of(Blanks) + 1 - first);
    if (body.starts_with('&')) {
        return ReadBased(body, number);
    }
    const bool isNegative = body.starts_with('-');
    body.remove_prefix(isNegative || body.starts_with('+') ? 1 : 0);
    const std::optional<double> value = ReadDecimal(std::string(body));
    if (!value) {
        return DispTypeMismatch;
    }
    const double whole = std::nearbyint(isNegative ? -*value : *value);  // a tie to the even one
    if (whole < std::numeric_limits<std::int32_t>::min() || whole > std::numeric_limits<std::int32_t>::max()) {
        return DispOverflow;
    }
    number = static_cast<std::int32_t>(whole);
    return StatusSuccess;
}

}  // namespace platform
