// Code page 1252 and German regional settings. On the host, strings that cross the seam contain only characters of that
// code page.
#include "platform/Regional.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "platform/host/DateValue.h"

namespace platform {

namespace {

// The characters for the bytes 0x80 to 0x9F. The five bytes that the code page doesn't define map to themselves, as on
// Windows. All other bytes map to themselves too.
constexpr std::array<char16_t, 32> HighControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned FirstHighControl = 0x80;
constexpr unsigned LastHighControl = 0x9F;

char AnsiCharacter(char16_t character) {
    if (character < FirstHighControl || (character > LastHighControl && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    const auto* const found = std::ranges::find(HighControls, character);
    return found == HighControls.end() ? '?' : static_cast<char>(FirstHighControl + (found - HighControls.begin()));
}

char16_t TextCharacter(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return number < FirstHighControl || number > LastHighControl ? static_cast<char16_t>(number)
                                                                 : HighControls[number - FirstHighControl];
}

// Handles only the letters of the code page.
char16_t UppercaseLetter(char16_t letter) {
    if ((letter >= u'a' && letter <= u'z') || (letter >= 0xE0 && letter <= 0xFE && letter != 0xF7)) {
        return static_cast<char16_t>(letter - 0x20);
    }
    const bool hasUppercaseBefore = letter == 0x0153 || letter == 0x0161 || letter == 0x017E;
    return letter == 0xFF ? char16_t{0x0178} : static_cast<char16_t>(letter - (hasUppercaseBefore ? 1 : 0));
}

constexpr std::string_view Spaces = " \t\n\v\f\r\xA0";
constexpr std::string_view Digits = "0123456789";
constexpr std::string_view SymbolsBefore = "+-\x80(";  // 0x80 is the euro sign
constexpr std::string_view SymbolsAfter = "+-\x80)";

// Skips spaces and symbols and appends the symbols to `seen`. Each symbol may occur only once around a number.
void SkipSymbols(std::string_view& text, std::string_view symbols, std::string& seen) {
    for (; !text.empty(); text.remove_prefix(1)) {
        const char next = text.front();
        if (Spaces.find(next) != std::string_view::npos) {
            continue;
        }
        if (symbols.find(next) == std::string_view::npos || seen.find(next) != std::string::npos) {
            return;
        }
        seen += next;
    }
}

// Removes leading characters that are in `characters`, and returns the removed characters.
std::string Take(std::string_view& text, std::string_view characters) {
    std::string taken(text.substr(0, text.find_first_not_of(characters)));
    text.remove_prefix(taken.size());
    return taken;
}

// Reads a number that begins with "&H" or "&O" as 32 bits, including the sign bit.
Status ReadBased(std::string_view& text, std::int64_t& number) {
    const bool isHexadecimal = text.starts_with("&H") || text.starts_with("&h");
    if (!isHexadecimal && !text.starts_with("&O") && !text.starts_with("&o")) {
        return DispTypeMismatch;
    }
    text.remove_prefix(2);
    std::uint32_t bits = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), bits, isHexadecimal ? 16 : 8);
    text.remove_prefix(static_cast<std::size_t>(parsed.ptr - text.data()));
    number = static_cast<std::int32_t>(bits);
    return parsed.ec == std::errc()                   ? StatusSuccess
           : parsed.ec == std::errc::invalid_argument ? DispTypeMismatch
                                                      : DispOverflow;
}

// Returns the exponent that `text` begins with. If the exponent is malformed, leaves it in `text` and returns 0.
int TakeExponent(std::string_view& text) {
    constexpr int largest = 99999;  // exceeds the length of any string
    std::string_view rest = text;
    const std::string symbol = Take(rest, "eE");
    const std::string sign = Take(rest, "+-");
    const std::string digits = Take(rest, Digits);
    if (symbol.size() != 1 || sign.size() > 1 || digits.empty()) {
        return 0;
    }
    text = rest;
    int exponent = largest;
    std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    exponent = std::min(exponent, largest);
    return sign == "-" ? -exponent : exponent;
}

// Reads an integer or decimal fraction with an optional exponent and rounds it to the nearest integer, ties to even.
Status ReadDecimal(std::string_view& text, std::int64_t& number) {
    const bool startsWithPoint = text.starts_with('.');
    std::string digits = "0" + Take(text, "0123456789.");
    std::erase(digits, '.');
    const std::size_t wholeDigits = digits.size();
    if (text.starts_with(',')) {
        text.remove_prefix(1);
        digits += Take(text, Digits);
    }
    if (startsWithPoint || digits.size() == 1) {
        return DispTypeMismatch;
    }
    const int separator = static_cast<int>(wholeDigits) + TakeExponent(text);
    digits.insert(0, static_cast<std::size_t>(std::max(-separator, 0)), '0');
    const auto end = static_cast<std::size_t>(std::max(separator, 0));
    digits.resize(std::max(digits.size(), end), '0');
    if (std::from_chars(digits.data(), digits.data() + end, number).ec == std::errc::result_out_of_range) {
        return DispOverflow;
    }
    std::string fraction = digits.substr(end);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    number += fraction > "5" || (fraction == "5" && number % 2 != 0) ? 1 : 0;
    return StatusSuccess;
}

}  // namespace

std::uint32_t GetACP() {
    return 1252;
}

std::string AnsiFromText(const std::u16string& text) {
    std::string bytes(text.size(), '\0');
    std::ranges::transform(text, bytes.begin(), AnsiCharacter);
    return bytes;
}

std::u16string TextFromAnsi(const std::string& bytes) {
    std::u16string text(bytes.size(), u'\0');
    std::ranges::transform(bytes, text.begin(), TextCharacter);
    return text;
}

std::u16string CharUpperW(const std::u16string& text) {
    std::u16string upper = text;
    std::ranges::transform(upper, upper.begin(), UppercaseLetter);
    return upper;
}

Status VarI4FromStr(const std::u16string& text, std::int32_t& number) {
    const std::string bytes = AnsiFromText(text.substr(0, text.find(u'\0')));  // the Windows call stops at a NUL, too
    std::string_view rest = bytes;
    std::string symbols;
    SkipSymbols(rest, SymbolsBefore, symbols);
    std::int64_t value = 0;
    const bool isBased = rest.starts_with('&');
    const Status status = isBased ? ReadBased(rest, value) : ReadDecimal(rest, value);
    SkipSymbols(rest, SymbolsAfter, symbols);
    const bool hasParentheses = symbols.find('(') != std::string::npos;
    if (!rest.empty() || hasParentheses != (symbols.find(')') != std::string::npos)) {
        return DispTypeMismatch;
    }
    if (status != StatusSuccess) {
        return status;
    }
    if (!isBased && (hasParentheses || symbols.find('-') != std::string::npos)) {
        value = -value;
    }
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return DispOverflow;
    }
    number = static_cast<std::int32_t>(value);
    return StatusSuccess;
}

std::u16string VarBstrFromDate(double date) {
    const std::time_t moment = std::llround((date - host::Epoch) * host::SecondsPerDay);
    const bool isMidnight = moment % host::SecondsPerDay == 0;
    std::tm calendar{};
    gmtime_r(&moment, &calendar);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), isMidnight ? "%d.%m.%Y" : "%d.%m.%Y %H:%M:%S", &calendar);
    return TextFromAnsi(text.data());
}

}  // namespace platform
