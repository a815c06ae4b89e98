// Windows code page 1252. On the host, strings that cross the seam contain only its characters.
#include <algorithm>
#include <array>

#include "platform/Regional.h"

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

}  // namespace platform
