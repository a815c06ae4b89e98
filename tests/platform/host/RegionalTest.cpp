#include "Check.h"
#include "platform/Regional.h"

TEST_CASE("Numbers under German settings") {
    struct {
        Text text;
        platform::Status status;
        std::int32_t number;
    } const cases[] = {
        {u" \t-1.000.000 € ", 0, -1000000},           {u",5000000000000000000000000000000000001", 0, 1},
        {u"-2147483648,5", 0, -2147483647 - 1},       {u"0," + Text(20000, u'0') + u"7e20001", 0, 7},
        {u"&H100000000", platform::DispOverflow, -1}, {u"1e999999999999999999999", platform::DispOverflow, -1},
        {u"1,2.3", platform::DispTypeMismatch, -1},   {u".5", platform::DispTypeMismatch, -1},
        {u"€5€", platform::DispTypeMismatch, -1},     {u"-&H1", platform::DispTypeMismatch, -1}};
    for (const auto& each : cases) {
        CAPTURE(each.text.substr(0, 60));
        std::int32_t number = -1;
        CHECK(platform::VarI4FromStr(each.text, number) == each.status);
        CHECK(number == each.number);
    }
}

TEST_CASE("Dates under German settings") {
    const std::vector<std::pair<double, Text>> cases = {{43085 + 86399.6 / 86400, u"17.12.2017"},
                                                        {-0.25, u"06:00:00"},
                                                        {-1.25, u"29.12.1899 06:00:00"},
                                                        {2958466, u""}};
    for (const auto& [date, text] : cases) {
        CHECK(platform::VarBstrFromDate(date) == text);
    }
}

TEST_CASE("All bytes of the code page come back from text") {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    CHECK(platform::AnsiFromText(platform::TextFromAnsi(bytes)) == bytes);
    CHECK(platform::TextFromAnsi("\x80\x81\x9F\xE4") == u"\u20AC\u0081\u0178\u00E4");
    CHECK(platform::AnsiFromText(u"\u0080\u4E2D") == "??");
}
