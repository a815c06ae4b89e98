#include <cstdint>

#include "Check.h"
#include "common/modDateTime.h"
#include "common/modStringLibrary.h"

TEST_CASE("A date value is stamped to the second, and refused outside the calendar") {
    constexpr double second = 1.0 / 86400;
    struct {
        double when;
        Text stamp;
    } const cases[] = {{43085 + 37000 * second, u"20171216 101640"},
                       {-0.25, u"18991230 060000"},
                       {-1.25, u"18991229 060000"},
                       {-1 - 86399.6 * second, u"18991230 000000"},
                       {43085 + 59.4 * second, u"20171216 000059"},
                       {43085 + 59.6 * second, u"20171216 000100"},
                       {43100 + 86399.6 * second, u"20180101 000000"},
                       {-657434, u"01000101 000000"},
                       {2958465 + 86399 * second, u"99991231 235959"}};
    for (const auto& each : cases) {
        CHECK(DateTimeStamp(each.when) == each.stamp);
        CHECK(DateStamp(each.when) == each.stamp.substr(0, 8));
    }
    for (std::int32_t passed = 0; passed < 86400; passed += 7) {
        CHECK(DateTimeStamp(43085 + passed * second).substr(13) == ZeroPadLong(passed % 60, 2));
    }
    CHECK(DateTimeStamp(0) == Text(15, u' '));
    CHECK(DateStamp(-0.0).empty());
    for (const double when : {-657435.0, 2958466.0, 1e300}) {
        CHECK(RaisedBy([&] { DateTimeStamp(when); }).number == 5);
    }
}
