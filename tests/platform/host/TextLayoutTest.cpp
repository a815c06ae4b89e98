#include <tuple>

#include "Check.h"
#include "platform/host/TextLayout.h"
#include "platform/host/TextScreen.h"

using platform::host::TextScreen;
using platform::host::WrappedLines;

TEST_CASE("Lines are broken at blanks, and within words that are too long") {
    const std::vector<std::tuple<std::u16string, int, std::vector<std::u32string>>> cases{
        {u"eins zwei", 9, {U"eins zwei"}},
        {u"eins zwei", 8, {U"eins", U"zwei"}},
        {u"eins   zwei  ", 5, {U"eins", U"zwei"}},
        {u"  eins zwei", 7, {U"  eins", U"zwei"}},
        {u"abcdefgh ij", 3, {U"abc", U"def", U"gh", U"ij"}},
        {u"a\r\nb\nc\rd\r\n", 5, {U"a", U"b", U"c", U"d", U""}},
        {u"a\tb\x1B\u009B", 9, {U"a b\uFFFD\uFFFD"}},
        {u"漢字漢字", 5, {U"漢字", U"漢字"}},
        {u"漢字", 0, {U"漢", U"字"}},
        {u"e\u0301e\u0301e\u0301", 3, {U"e\u0301e\u0301e\u0301"}},
        {u"      ", 3, {U""}}};
    for (const auto& [text, width, lines] : cases) {
        CHECK(WrappedLines(text, width) == lines);
    }
}

TEST_CASE("Half of a wide character never stays on the screen") {
    TextScreen screen(6, 1, {});
    screen.Write(0, 0, U"漢字e\u0301");
    CHECK(screen.Print(false) == "漢字e\u0301 \n");
    screen.Write(1, 0, U"|");
    CHECK(screen.Print(false) == " |字e\u0301 \n");
    screen.Write(2, 0, U"|");
    CHECK(screen.Print(false) == " || e\u0301 \n");
    screen.Write(5, 0, U"漢");
    screen.Write(-1, 0, U"漢");
    CHECK(screen.Print(false) == " || e\u0301 \n");
}
