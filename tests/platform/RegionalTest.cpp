#include "Check.h"
#include "platform/Regional.h"

TEST_CASE("VarI4FromStr parses plain numbers in any locale and rounds ties to even") {
    std::int32_t number = 0;
    for (const auto& each : {std::pair(u"+7", 7),
                             {u"25E-1", 2},
                             {u"35e-1", 4},
                             {u"&hffffffff", -1},
                             {u"&O17", 15},
                             {u"3-", -3},
                             {u"( 3)", -3},
                             {u"\u00A03\u00A0", 3}}) {
        CAPTURE(Text(each.first));
        CHECK(platform::VarI4FromStr(each.first, number) == platform::StatusSuccess);
        CHECK(number == each.second);
    }
    for (const Text text : {u"", u"abc", u"4x", u"4 2", u"1e", u"--1", u"&H", u"&HG", u"(3", u"3)", u"-3-"}) {
        CAPTURE(text);
        CHECK(platform::VarI4FromStr(text, number) == platform::DispTypeMismatch);
    }
    CHECK(platform::VarI4FromStr(u"2147483648", number) == platform::DispOverflow);
    CHECK(number == 3);
}
