#include <vector>

#include "Check.h"
#include "platform/Regional.h"

TEST_CASE("Numbers under German settings") {
    struct Case {
        std::u16string text;
        platform::Status status;
        std::int32_t number = 0;
    };
    const std::u16string half = u"," + std::u16string(40000, u'9');
    const std::vector<Case> cases = {
        {u"1.234,5", platform::StatusSuccess, 1234},
        {u"1.235,5", platform::StatusSuccess, 1236},
        {u" \t-1.000.000 € ", platform::StatusSuccess, -1000000},
        {u"€ 5-", platform::StatusSuccess, -5},
        {u"0,5", platform::StatusSuccess, 0},
        {u",5000000000000000000000000000000000001", platform::StatusSuccess, 1},
        {u"2147483647,5", platform::DispOverflow},
        {u"-2147483648,5", platform::StatusSuccess, -2147483647 - 1},
        {u"1,5e1", platform::StatusSuccess, 15},
        {u"1d3", platform::DispTypeMismatch},
        {u"1,2,3", platform::DispTypeMismatch},
        {u"1,2.3", platform::DispTypeMismatch},
        {u".5", platform::DispTypeMismatch},
        {u"€5€", platform::DispTypeMismatch},
        {u"(-5)", platform::DispTypeMismatch},
        {u"-&H1", platform::DispTypeMismatch},
        {u"&H0000000000FFFF", platform::StatusSuccess, 65535},
        {u"&H100000000", platform::DispOverflow},
        // What a hostile file may hold.
        {std::u16string(40000, u'9'), platform::DispOverflow},
        {half, platform::StatusSuccess, 1},
        {u"0,0e999999999999", platform::StatusSuccess, 0},
        {u"1e999999999999999999999", platform::DispOverflow},
        {u"1e-999999999999999999999", platform::StatusSuccess, 0},
        {u"0," + std::u16string(20000, u'0') + u"7e20001", platform::StatusSuccess, 7},
    };
    for (const Case& each : cases) {
        CAPTURE(each.text.substr(0, 60));
        std::int32_t number = 0;
        CHECK(platform::VarI4FromStr(each.text, number) == each.status);
        CHECK(number == each.number);
    }
}

TEST_CASE("Dates under German settings") {
    struct Case {
        double date;
        std::u16string text;
    };
    constexpr double Second = 1.0 / 86400;
    const std::vector<Case> cases = {
        {43085 + 37000 * Second, u"16.12.2017 10:16:40"},
        {43085, u"16.12.2017"},
        {43085 + 37000.4 * Second, u"16.12.2017 10:16:40"},
        {43085 + 86399.6 * Second, u"17.12.2017"},
        {43085 + 59.7 * Second, u"16.12.2017 00:01:00"},
        {0, u"00:00:00"},
        {0.25, u"06:00:00"},
        {-0.25, u"06:00:00"},
        {-1.25, u"29.12.1899 06:00:00"},
        {60, u"28.02.1900"},
        {-657434, u"01.01.0100"},
        {2958465.5, u"31.12.9999 12:00:00"},
        {2958466, u""},
    };
    for (const Case& each : cases) {
        CHECK(platform::VarBstrFromDate(each.date) == each.text);
    }
}

TEST_CASE("All bytes of the code page come back from text") {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    CHECK(platform::AnsiFromText(platform::TextFromAnsi(bytes)) == bytes);
    CHECK(platform::TextFromAnsi("\x80\x81\x9F\xE4") == u"\u20AC\u0081\u0178\u00E4");
    CHECK(platform::AnsiFromText(u"\u0080") == "?");
}
