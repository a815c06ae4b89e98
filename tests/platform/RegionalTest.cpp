#include <vector>

#include "Check.h"
#include "platform/Regional.h"

// What holds under any user's regional settings.

TEST_CASE("Text reads as a number, a tie goes to the even one") {
    struct Case {
        std::u16string text;
        platform::Status status;
        std::int32_t number = 0;
    };
    const std::vector<Case> cases = {
        {u"42", platform::StatusSuccess, 42},
        {u" -7 ", platform::StatusSuccess, -7},
        {u"7-", platform::StatusSuccess, -7},
        {u"+7", platform::StatusSuccess, 7},
        {u"(7)", platform::StatusSuccess, -7},
        {u"000123", platform::StatusSuccess, 123},
        {u"1e3", platform::StatusSuccess, 1000},
        {u"25E-1", platform::StatusSuccess, 2},
        {u"35e-1", platform::StatusSuccess, 4},
        {u"-15e-1", platform::StatusSuccess, -2},
        {u"&H1F", platform::StatusSuccess, 31},
        {u"&hffffffff", platform::StatusSuccess, -1},
        {u"&O17", platform::StatusSuccess, 15},
        {u"2147483647", platform::StatusSuccess, 2147483647},
        {u"-2147483648", platform::StatusSuccess, -2147483647 - 1},
        {u"2147483648", platform::DispOverflow},
        {u"99999999999", platform::DispOverflow},
        {u"", platform::DispTypeMismatch},
        {u" ", platform::DispTypeMismatch},
        {u"abc", platform::DispTypeMismatch},
        {u"4x", platform::DispTypeMismatch},
        {u"4 2", platform::DispTypeMismatch},
        {u"1e", platform::DispTypeMismatch},
        {u"--1", platform::DispTypeMismatch},
        {u"&H", platform::DispTypeMismatch},
        {u"&HG", platform::DispTypeMismatch},
        {u"(7", platform::DispTypeMismatch},
    };
    for (const Case& each : cases) {
        CAPTURE(each.text);
        std::int32_t number = 0;
        CHECK(platform::VarI4FromStr(each.text, number) == each.status);
        CHECK(number == each.number);
    }
}

TEST_CASE("Text goes through the code page and back") {
    const std::u16string german = u"Österreich, ä ö ü ß";
    CHECK(platform::TextFromAnsi(platform::AnsiFromText(german)) == german);
    CHECK(platform::AnsiFromText(german).size() == german.size());
    CHECK(platform::AnsiFromText(u"\u0416\u4E2D") == "??");
}
