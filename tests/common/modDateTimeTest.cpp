#include "Check.h"
#include "common/modDateTime.h"

TEST_CASE("A date is rounded to the second and must be between the years 100 and 9999") {
    constexpr double second = 1.0 / 86400;
    const std::pair<double, Text> cases[] = {
        {43085 + 37000 * second, u"20171216 101640"},  {-0.25, u"18991230 060000"},
        {-1 - 86399.6 * second, u"18991230 000000"},   {43085 + 59.4 * second, u"20171216 000059"},
        {43085 + 59.6 * second, u"20171216 000100"},   {-657434, u"01000101 000000"},
        {2958465 + 86399 * second, u"99991231 235959"}};
    for (const auto& [when, stamp] : cases) {
        CHECK(DateTimeStamp(when) == stamp);
        CHECK(DateStamp(when) == stamp.substr(0, 8));
    }
    CHECK(DateTimeStamp(0) == Text(15, u' '));
    CHECK(DateStamp(-0.0).empty());
    for (const double when : {-657435.0, 2958466.0, 1e300}) {
        CHECK(RaisedBy([&] { DateTimeStamp(when); }).number == 5);
    }
}
