#include <string_view>

#include "Check.h"
#include "platform/host/Unicode.h"

using namespace std::literals;
using platform::host::FromUtf8;
using platform::host::ToUtf8;

TEST_CASE("Text goes from UTF-8 to UTF-16 and back") {
    const std::vector<std::pair<std::string_view, std::u16string_view>> cases{
        {"a\0z"sv, u"a\0z"sv},
        {"L\xC3\xB6schen"sv, u"L\u00F6schen"sv},
        {"\xC2\x80\xDF\xBF\xE0\xA0\x80"sv, u"\u0080\u07FF\u0800"sv},
        {"\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"sv, u"\uD7FF\uE000\uFFFF"sv},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"sv, u"\U00010000\U0010FFFF"sv},
    };
    for (const auto& [bytes, text] : cases) {
        CHECK(FromUtf8(bytes) == text);
        CHECK(ToUtf8(text) == bytes);
    }
}

TEST_CASE("What is no text becomes the replacement character, and what follows it is read") {
    const std::vector<std::pair<std::string_view, std::u16string_view>> cases{
        {"\x80|"sv, u"\uFFFD|"sv},
        {"\xC3|"sv, u"\uFFFD|"sv},
        {"\xE2\x82|"sv, u"\uFFFD|"sv},
        {"\xF0\x9F\x98"sv, u"\uFFFD"sv},
        {"\xC0\xAF"sv, u"\uFFFD\uFFFD"sv},
        {"\xED\xA0\x80"sv, u"\uFFFD\uFFFD\uFFFD"sv},
        {"\xF4\x90\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD\uFFFD"sv},
        {"\xFF\xC3\xB6"sv, u"\uFFFD\u00F6"sv}};
    for (const auto& [bytes, text] : cases) {
        CHECK(FromUtf8(bytes) == text);
    }
    CHECK(ToUtf8(u"a\xD83D") == "a\xEF\xBF\xBD");
    CHECK(ToUtf8(u"\xDE00\xD83D\xDE00") == "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}
