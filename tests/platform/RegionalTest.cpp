#include <initializer_list>

#include "Check.h"
#include "platform/Regional.h"

// What holds under any user's regional settings.

TEST_CASE("Text reads as a number, a tie goes to the even one") {
    struct Case {
        Text text;
        std::int32_t number;
    };
    for (const Case& each : std::initializer_list<Case>{{u"42", 42},
                                                        {u" -7 ", -7},
                                                        {u"7-", -7},
                                                        {u"+7", 7},
                                                        {u"(7)", -7},
                                                        {u"000123", 123},
                                                        {u"1e3", 1000},
                                                        {u"25E-1", 2},
                                                        {u"35e-1", 4},
                                                        {u"&H1F", 31},
                                                        {u"&hffffffff", -1},
                                                        {u"&O17", 15},
                                                        {u"2147483647", 2147483647},
                                                        {u"-2147483648", -2147483647 - 1}}) {
        CAPTURE(each.text);
        std::int32_t number = 0;
        CHECK(platform::VarI4FromStr(each.text, number) == platform::StatusSuccess);
        CHECK(number == each.number);
    }
    std::int32_t none = 5;
    for (const Text text : {u"2147483648", u"99999999999"}) {
        CHECK(platform::VarI4FromStr(text, none) == platform::DispOverflow);
    }
    for (const Text text : {u"", u" ", u"abc", u"4x", u"4 2", u"1e", u"--1", u"&H", u"&HG", u"(7"}) {
        CAPTURE(text);
        CHECK(platform::VarI4FromStr(text, none) == platform::DispTypeMismatch);
    }
    CHECK(none == 5);
}

TEST_CASE("Text goes through the code page and back") {
    const Text german = u"Österreich, ä ö ü ß";
    CHECK(platform::TextFromAnsi(platform::AnsiFromText(german)) == german);
    CHECK(platform::AnsiFromText(german).size() == german.size());
    CHECK(platform::AnsiFromText(u"\u0416\u4E2D") == "??");
}
