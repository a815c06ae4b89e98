// German regional settings and Windows' code page 1252.
#include "platform/Regional.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string_view>

#include "platform/host/NameOrder.h"

namespace platform {

namespace {

// The characters of the bytes 0x80 to 0x9F; all others stand for the character of their own number. The five bytes that
// the code page does not define stand for the control characters of theirs, as on Windows.
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
    const auto* const place = std::find(HighControls.begin(), HighControls.end(), character);
    return place == HighControls.end() ? '?' : static_cast<char>(FirstHighControl + (place - HighControls.begin()));
}

char16_t TextCharacter(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return number < FirstHighControl || number > LastHighControl ? static_cast<char16_t>(number)
                                                                 : HighControls[number - FirstHighControl];
}

constexpr char16_t DecimalSeparator = u',';
constexpr char16_t ThousandsSeparator = u'.';
constexpr char16_t CurrencySign = u'€';

bool IsBlank(char16_t character) {
    return character == u' ' || (character >= u'\t' && character <= u'\r');
}

bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

// A number read digit by digit, because a tie must be told from its neighbours however long the text is.
struct Decimal {
    std::string digits;      // the leading one is not 0; empty for zero
    std::int64_t point = 0;  // the number of digits before the decimal point, which may stand outside of them
};

// Reads the number that fills a text. What may stand around it may stand in any order, each at most once.
class NumberReader {
public:
    explicit NumberReader(std::u16string_view text) : rest_(text) {}

    Status Read(std::int32_t& number) {
        AffixesPass();
        if (Taken(u'&')) {
            return ReadBased(number);
        }
        Decimal decimal;
        if (!ReadDecimal(decimal)) {
            return DispTypeMismatch;
        }
        AffixesPass();
        if (!rest_.empty() || (opened_ && !closed_)) {
            return DispTypeMismatch;
        }
        return Rounded(decimal, number);
    }

private:
    bool Taken(char16_t character) {
        if (rest_.empty() || rest_.front() != character) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    bool TakenOnce(char16_t character, bool& earlier) {
        if (earlier || !Taken(character)) {
            return false;
        }
        earlier = true;
        return true;
    }

    // Blanks, sign, brackets and currency sign. A sign and brackets exclude one another: both tell the sign.
    void AffixesPass() {
        while (!rest_.empty()) {
            if (IsBlank(rest_.front())) {
                rest_.remove_prefix(1);
            } else if (!AffixPassed()) {
                return;
            }
        }
    }

    bool AffixPassed() {
        if (TakenOnce(u'-', signed_)) {
            return negative_ = true;
        }
        if (!numberRead_ && TakenOnce(u'(', signed_)) {
            return negative_ = opened_ = true;
        }
        return TakenOnce(u'+', signed_) || TakenOnce(CurrencySign, currency_) ||
               (numberRead_ && opened_ && TakenOnce(u')', closed_));
    }

    bool ReadDecimal(Decimal& decimal) {
        bool anyDigit = false;
        bool behindPoint = false;
        for (; !rest_.empty(); rest_.remove_prefix(1)) {
            const char16_t character = rest_.front();
            if (IsDigit(character)) {
                anyDigit = true;
                DigitAppend(decimal, character, behindPoint);
            } else if (character == DecimalSeparator && !behindPoint) {
                behindPoint = true;
            } else if (character != ThousandsSeparator || behindPoint || !anyDigit) {
                break;
            }
        }
        numberRead_ = true;
        return anyDigit && ReadExponent(decimal.point);
    }

    static void DigitAppend(Decimal& decimal, char16_t digit, bool behindPoint) {
        if (!decimal.digits.empty() || digit != u'0') {
            decimal.digits += static_cast<char>(digit);
            decimal.point += behindPoint ? 0 : 1;
        } else if (behindPoint) {
            --decimal.point;
        }
    }

    bool ReadExponent(std::int64_t& point) {
        if (!Taken(u'e') && !Taken(u'E')) {
            return true;
        }
        const bool minus = Taken(u'-');
        if (!minus) {
            Taken(u'+');
        }
        if (rest_.empty() || !IsDigit(rest_.front())) {
            return false;
        }
        // Far more than any text has digits to make up for.
        constexpr std::int64_t Enough = std::int64_t{1} << 56;
        std::int64_t exponent = 0;
        for (; !rest_.empty() && IsDigit(rest_.front()); rest_.remove_prefix(1)) {
            exponent = std::min(exponent * 10 + (rest_.front() - u'0'), Enough);
        }
        point += minus ? -exponent : exponent;
        return true;
    }

    Status Rounded(const Decimal& decimal, std::int32_t& number) const {
        constexpr std::int64_t MostDigits = 10;  // of a 32-bit number
        if (decimal.digits.empty() || decimal.point < 0) {
            number = 0;
            return StatusSuccess;
        }
        if (decimal.point > MostDigits) {
            return DispOverflow;
        }
        const auto whole = static_cast<std::size_t>(decimal.point);
        std::int64_t value = 0;
        for (std::size_t place = 0; place < whole; ++place) {
            value = value * 10 + (place < decimal.digits.size() ? decimal.digits[place] - '0' : 0);
        }
        if (whole < decimal.digits.size()) {
            const std::string_view fraction = std::string_view(decimal.digits).substr(whole);
            const bool tie = fraction.front() == '5' && fraction.find_first_not_of('0', 1) == std::string_view::npos;
            value += tie ? value % 2 : (fraction.front() >= '5' ? 1 : 0);
        }
        value = negative_ ? -value : value;
        if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
            return DispOverflow;
        }
        number = static_cast<std::int32_t>(value);
        return StatusSuccess;
    }

    static int HexDigit(char16_t character) {
        if (IsDigit(character)) {
            return character - u'0';
        }
        const char16_t lower = character | 0x20;
        return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : std::numeric_limits<int>::max();
    }

    // "&H" and "&O" tell the 32 bits themselves, the sign bit included, so that no sign goes with them.
    Status ReadBased(std::int32_t& number) {
        const bool hexadecimal = Taken(u'h') || Taken(u'H');
        if (signed_ || currency_ || (!hexadecimal && !Taken(u'o') && !Taken(u'O'))) {
            return DispTypeMismatch;
        }
        const int base = hexadecimal ? 16 : 8;
        constexpr std::uint64_t TooMuch = std::uint64_t{1} << 32;
        std::uint64_t value = 0;
        bool anyDigit = false;
        for (; !rest_.empty() && HexDigit(rest_.front()) < base; rest_.remove_prefix(1)) {
            anyDigit = true;
            value =
                std::min(value * static_cast<unsigned>(base) + static_cast<unsigned>(HexDigit(rest_.front())), TooMuch);
        }
        if (!anyDigit || !std::all_of(rest_.begin(), rest_.end(), IsBlank)) {
            return DispTypeMismatch;
        }
        if (value == TooMuch) {
            return DispOverflow;
        }
        number = static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
        return StatusSuccess;
    }

    std::u16string_view rest_;
    bool negative_ = false;
    bool signed_ = false;
    bool opened_ = false;
    bool closed_ = false;
    bool currency_ = false;
    bool numberRead_ = false;
};

template <typename... Numbers>
std::u16string Formatted(const char* format, Numbers... numbers) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, numbers...);
    const std::string_view text = buffer.data();
    return {text.begin(), text.end()};
}

std::u16string DayText(std::int64_t day) {
    using namespace std::chrono;
    const year_month_day date = sys_days(December / 30 / 1899) + days(day);
    return Formatted("%02u.%02u.%04d", static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                     static_cast<int>(date.year()));
}

}  // namespace

std::string AnsiFromText(const std::u16string& text) {
    std::string bytes(text.size(), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(), AnsiCharacter);
    return bytes;
}

std::u16string TextFromAnsi(const std::string& bytes) {
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), TextCharacter);
    return text;
}

std::u16string CharUpperW(const std::u16string& text) {
    std::u16string capitals = text;
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), host::Capital);
    return capitals;
}

Status VarI4FromStr(const std::u16string& text, std::int32_t& number) {
    // The system's call takes a text that a null character ends.
    return NumberReader(std::u16string_view(text).substr(0, text.find(u'\0'))).Read(number);
}

std::u16string VarBstrFromDate(double date) {
    constexpr double FirstDay = -657434;  // 1 January 100
    constexpr double EndDay = 2958466;    // the day behind 31 December 9999
    constexpr std::int64_t SecondsPerDay = 86400;
    if (!(date > FirstDay - 1 && date < EndDay)) {
        return {};
    }
    // The fraction counts forward from midnight of the day, before 1899 too.
    double wholeDays = 0;
    const double fraction = std::fabs(std::modf(date, &wholeDays));
    auto day = static_cast<std::int64_t>(wholeDays);
    std::int64_t second = std::llround(fraction * static_cast<double>(SecondsPerDay));
    if (second == SecondsPerDay) {
        second = 0;
        ++day;
    }
    std::u16string time = Formatted("%02d:%02d:%02d", static_cast<int>(second / 3600),
                                    static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
    if (day == 0) {
        return time;
    }
    return second == 0 ? DayText(day) : DayText(day) + u' ' + time;
}

}  // namespace platform
