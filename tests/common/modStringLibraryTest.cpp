#include "Check.h"
#include "common/modStringLibrary.h"

TEST_CASE("MidFixed pads past either end, and FixLeft and FixRight return an exact width") {
    CHECK(MidFixed(u"abc", 5, 2, u"*x") == u"**");
    CHECK(MidFixed(u"abc", -2, 7, u"*") == u"***abc*");
    CHECK(MidFixed(u"abc", -1, 2, u"*") == u"**");
    CHECK(MidFixed(u"abc", 0) == u" abc");
    CHECK(MidFixed(u"abc", 3, 4, u"") == u"c   ");
    CHECK(FixLeft(u" abc", 6, u"*") == u" abc**");
    CHECK(FixLeft(u"abc", -1) == u"");
    CHECK(FixRight(u" abc ", 5, u"*") == u"**abc");
    CHECK(FixRight(u"abc  ") == u"  abc");
    CHECK(FixRight(u"abc", 1) == u"c");
    CHECK(FixRight(u"abc", -1) == u"");
}

TEST_CASE("DeleteChars and InsertText ignore positions outside the string") {
    CHECK(DeleteChars(u"abcdef", 5) == u"abcd");
    CHECK(DeleteChars(u"abcdef", 0, 2) == u"bcdef");
    CHECK(DeleteChars(u"abcdef", 4, 10) == u"abc");
    CHECK(DeleteChars(u"abcdef", 3, -1) == u"abcdef");
    CHECK(DeleteChars(u"abcdef", -1, 2) == u"abcdef");
    CHECK(DeleteChars(u"abcdef", 6, 1) == u"abcde");
    CHECK(InsertText(u"abc", u"X", 4) == u"abcX");
    CHECK(InsertText(u"abc", u"X", 5) == u"abc");
    CHECK(InsertText(u"abc", u"X", 0) == u"abc");
}

TEST_CASE("ScanChars finds listed or unlisted characters from either end") {
    CHECK(ScanChars(u"banana", u"n", true) == 1);
    CHECK(ScanChars(u"banana", u"an", true, true) == 1);
    CHECK(ScanChars(u"banana", u"", true) == 1);
    CHECK(ScanChars(u"banana", u"", true, true) == 6);
    CHECK(ScanChars(u"banana", u"", {}, true) == 0);
    CHECK(ScanChars(u"", u"", true) == 0);
    CHECK(ScanChars(u"aaa", u"a", true) == 0);
}

TEST_CASE("Replacement text isn't searched again, and embedded quotes are doubled") {
    CHECK(TranslateChars(u"abc", u"abc", u"x") == u"xbc");
    CHECK(TranslateChars(u"aba", u"aa", u"xy") == u"xbx");
    CHECK(FoldAccents(u"äáãâàåéêëèîïíìôóõòöûùúüñçÿÄß") == u"aaaaaaeeeeiiiiooooouuuuncyÄß");
    CHECK(ExpandUmlauts(u"äÄöÖüÜß") == u"aeAEoeOEueUEß");
    CHECK(ReplaceAll(u"aaa", u"a", u"aa") == u"aaaaaa");
    CHECK(ReplaceAll(u"aaa", u"aa", u"b") == u"ba");
    CHECK(QuoteText(u"a\"b") == u"\"a\"\"b\"");
    CHECK(QuoteText(u"a''b", u"''") == u"''a''''b''");
    CHECK(QuoteText(u"a", u"") == u"a");
}

TEST_CASE("Paths are split and joined at backslashes") {
    for (const auto& [directory, file] : {std::pair<Text, Text>{u"C:\\a\\", u"b.txt"}, {u"", u"b.txt"}}) {
        Text path = directory + file;
        CHECK(PathDirectory(path) == directory);
        CHECK(PathFileName(path) == file);
    }
    Text drive = u"C:";
    CHECK(PathDirectory(drive) == u"C:\\");
    CHECK(drive == u"C:\\");
    CHECK(PathCombine(u" C:\\a ", u" b ") == u"C:\\a\\b");
    CHECK(PathCombine(u"C:\\a\\", u"\\\\b") == u"C:\\a\\\\b");
}

TEST_CASE("A length or position that exceeds 16 bits raises an overflow") {
    const Text longest(32767, u'a');
    const Text tooLong(32768, u'a');
    CHECK(RaisedBy([] { MidFixed(u"abc", 1, 32767); }).number == 6);  // the sum exceeds 16 bits
    CHECK(RaisedBy([] { MidFixed(u"abc", -32767); }).number == 6);
    CHECK(RaisedBy([&] { InsertText(longest, u"b", 1); }).number == 6);
    CHECK(RaisedBy([&] { FindAnyChar(tooLong, u"a"); }).number == 6);
    CHECK(RaisedBy([&] { TranslateChars(tooLong, u"a", u"b"); }).number == 6);
    CHECK(RaisedBy([&] { ReplaceAll(longest, u"a", u"bb"); }).number == 6);
    // The overflow is raised even if the result doesn't depend on the length.
    CHECK(RaisedBy([&] { InsertText(tooLong, {}, 0); }).number == 6);
    CHECK(RaisedBy([&] { ReplaceAll(tooLong, {}, u"b"); }).number == 6);
}
