#include "Check.h"
#include "platform/Regional.h"

// What holds under any user's regional settings.
TEST_CASE("Text reads as a number, a tie goes to the even one") {
    std::int32_t number = 0;
    for (const auto& each :
         {std::pair(u"+7", 7), {u"25E-1", 2}, {u"35e-1", 4}, {u"&H1F", 31}, {u"&hffffffff", -1}, {u"&O17", 15}}) {
        CAPTURE(Text(each.first));
        CHECK(platform::VarI4FromStr(each.first, number) == platform::StatusSuccess);
        CHECK(number == each.second);
    }
    number = 5;
    for (const Text text : {u"", u" ", u"abc", u"4x", u"4 2", u"1e", u"--1", u"&H", u"&HG"}) {
        CAPTURE(text);
        CHECK(platform::VarI4FromStr(text, number) == platform::DispTypeMismatch);
    }
    CHECK(platform::VarI4FromStr(u"2147483648", number) == platform::DispOverflow);
    CHECK(number == 5);
}
