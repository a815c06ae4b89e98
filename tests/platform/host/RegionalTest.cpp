#include "Check.h"
#include "platform/Regional.h"
#include "platform/host/Unicode.h"

TEST_CASE("Numbers and dates use the German format") {
    std::int32_t number = 0;
    for (const auto& each : {std::pair(u" \t-1.000.000 ", -1000000),
                             {u"2,500000000000000000000000000001", 3},
                             {u"-2147483648,5", -2147483647 - 1},
                             {u"(\u20AC3)", -3}}) {
        CAPTURE(Text(each.first));
        CHECK(platform::VarI4FromStr(each.first, number) == platform::StatusSuccess);
        CHECK(number == each.second);
    }
    CHECK(platform::VarI4FromStr(u"&H100000000", number) == platform::DispOverflow);
    CHECK(platform::VarI4FromStr(u"1,2.3", number) == platform::DispTypeMismatch);
    CHECK(platform::VarBstrFromDate(43085 + 86399.6 / 86400) == u"17.12.2017");
    CHECK(platform::VarBstrFromDate(43085.75) == u"16.12.2017 18:00:00");
}

TEST_CASE("Every byte of the code page survives conversion to text and back") {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    CHECK(platform::AnsiFromText(platform::TextFromAnsi(bytes)) == bytes);
    CHECK(platform::TextFromAnsi(bytes).substr(0x7F, 34) ==
          u"\u007F€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ\u00A0");
    CHECK(platform::AnsiFromText(u"\u0080\u0100") == "??");
    CHECK(platform::host::FromUtf8("M\xFCller") == u"M\u00FCller");  // invalid UTF-8
    CHECK(platform::CharUpperW(u"az\u00E0\u00FE\u00F7\u00DF\u00FF\u0153\u0161\u017E") ==
          u"AZ\u00C0\u00DE\u00F7\u00DF\u0178\u0152\u0160\u017D");
}
