// Windows' code page 1252, whose 256 characters are all that crosses the seam.
#include <algorithm>
#include <array>
#include <clocale>
#include <cwctype>

#include "platform/Regional.h"

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
    const auto* const place = std::ranges::find(HighControls, character);
    return place == HighControls.end() ? '?' : static_cast<char>(FirstHighControl + (place - HighControls.begin()));
}

char16_t TextCharacter(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return number < FirstHighControl || number > LastHighControl ? static_cast<char16_t>(number)
                                                                 : HighControls[number - FirstHighControl];
}

}  // namespace

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
    static const locale_t everyLetter = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::u16string capitals = text;
    std::ranges::transform(capitals, capitals.begin(),
                           [](char16_t letter) { return static_cast<char16_t>(towupper_l(letter, everyLetter)); });
    return capitals;
}

}  // namespace platform
