#include "Check.h"
#include "common/modStringLibrary.h"

namespace {

const Text Longest(32767, u'a');
const Text TooLong(32768, u'a');

}  // namespace

TEST_CASE("MidFixed cuts as out of an endless row of pads") {
    CHECK(MidFixed(u"abc", 2, 5, u"*") == u"bc***");
    CHECK(MidFixed(u"abc", 5, 2, u"*x") == u"**");
    CHECK(MidFixed(u"abc", -2, 7, u"*") == u"***abc*");
    CHECK(MidFixed(u"abc", 0, 2, u"*") == u"*a");
    CHECK(MidFixed(u"abc", -1, 2, u"*") == u"**");
    CHECK(MidFixed(u"abc", 2) == u"bc");
    CHECK(MidFixed(u"abc", 0) == u" abc");
    CHECK(MidFixed(u"abc", 4) == u"");
    CHECK(MidFixed(u"", 1, 3, u"*") == u"***");
    CHECK(MidFixed(u"abc", 2, 0) == u"");
    CHECK(MidFixed(u"abc", 2, 4, u"") == u"bc  ");
}

TEST_CASE("DeleteChars and InsertText stay inside the text") {
    CHECK(DeleteChars(u"abcdef", 2, 3) == u"aef");
    CHECK(DeleteChars(u"abcdef", 5) == u"abcd");
    CHECK(DeleteChars(u"abcdef", 0, 2) == u"bcdef");
    CHECK(DeleteChars(u"abcdef", -1, 2) == u"abcdef");
    CHECK(DeleteChars(u"abcdef", 4, 10) == u"abc");
    CHECK(DeleteChars(u"abcdef", 7, 1) == u"abcdef");
    CHECK(InsertText(u"abc", u"X", 1) == u"Xabc");
    CHECK(InsertText(u"abc", u"X", 4) == u"abcX");
    CHECK(InsertText(u"abc", u"X", 5) == u"abc");
    CHECK(InsertText(u"abc", u"X", 0) == u"abc");
    CHECK(InsertText(u"", u"X", 1) == u"X");
}

TEST_CASE("Fields have exactly their width") {
    CHECK(FixLeft(u"abc", 2) == u"ab");
    CHECK(FixLeft(u" abc", 6, u"*") == u" abc**");
    CHECK(FixLeft(u"abc", 0) == u"");
    CHECK(FixRight(u"abc", 2) == u"bc");
    CHECK(FixRight(u" abc ", 5, u"*") == u"**abc");
    CHECK(FixRight(u"abc  ") == u"  abc");
    CHECK(FixRight(u"abc", -1) == u"");
    CHECK(ZeroPadLong(2017, 2) == u"17");
    CHECK(ZeroPadLong(-2147483647 - 1, 12) == u"0-2147483648");
    CHECK(ZeroPadInteger(7, 3) == u"007");
    CHECK(ZeroPadInteger(-5, 3) == u"0-5");
}

TEST_CASE("ScanChars finds by membership, from either end") {
    CHECK(ScanChars(u"banana", u"n", true) == 1);
    CHECK(ScanChars(u"banana", u"n", {}, true) == 5);
    CHECK(ScanChars(u"banana", u"an", true, true) == 1);
    CHECK(ScanChars(u"aaa", u"a", true) == 0);
    CHECK(ScanChars(u"abc", u"") == 0);
    CHECK(ScanChars(u"abc", u"", true) == 1);
    CHECK(ScanChars(u"abc", u"", true, true) == 3);
    CHECK(ScanChars(u"", u"", true) == 0);
    CHECK(FindAnyChar(u"banana", u"xa") == 2);
    CHECK(FindAnyChar(u"banana", u"A") == 0);
}

TEST_CASE("Characters and texts are replaced once") {
    CHECK(TranslateChars(u"abc", u"a", u"xyz") == u"xbc");
    CHECK(TranslateChars(u"abc", u"abc", u"x") == u"xbc");
    CHECK(TranslateChars(u"aba", u"aa", u"xy") == u"xbx");
    CHECK(TranslateChars(u"ab", u"ab", u"ba") == u"ba");
    CHECK(TranslateChars(u"abc", u"", u"x") == u"abc");
    CHECK(FoldAccents(u"àéîõüñçÿÄß") == u"aeiouncyÄß");
    CHECK(ExpandUmlauts(u"äÄöÖüÜß") == u"aeAEoeOEueUEß");
    CHECK(ReplaceAll(u"aaa", u"a", u"aa") == u"aaaaaa");
    CHECK(ReplaceAll(u"aaa", u"aa", u"b") == u"ba");
    CHECK(ReplaceAll(u"abab", u"b", u"") == u"aa");
    CHECK(ReplaceAll(u"abc", u"", u"x") == u"abc");
}

TEST_CASE("Paths are taken apart and joined at their backslashes") {
    struct {
        Text path, directory, file;
    } const cases[] = {
        {u"C:\\a\\b.txt", u"C:\\a\\", u"b.txt"},
        {u"C:\\a\\", u"C:\\a\\", u""},
        {u"b.txt", u"", u"b.txt"},
        {u"\\\\server\\share\\b", u"\\\\server\\share\\", u"b"},
        {u"", u"", u""},
    };
    for (const auto& each : cases) {
        Text path = each.path;
        CHECK(PathDirectory(path) == each.directory);
        CHECK(path == each.path);
        CHECK(PathFileName(each.path) == each.file);
    }
    Text drive = u"C:";
    CHECK(PathDirectory(drive) == u"C:\\");
    CHECK(drive == u"C:\\");

    CHECK(PathCombine(u" C:\\a ", u" b ") == u"C:\\a\\b");
    CHECK(PathCombine(u"C:\\a\\", u"\\b") == u"C:\\a\\b");
    CHECK(PathCombine(u"C:\\a", u"\\\\b") == u"C:\\a\\\\b");
    CHECK(PathCombine(u"", u"b") == u"\\b");
}

TEST_CASE("QuoteText doubles the quotes inside") {
    CHECK(QuoteText(u"") == u"\"\"");
    CHECK(QuoteText(u"a\"b") == u"\"a\"\"b\"");
    CHECK(QuoteText(u"a''b", u"''") == u"''a''''b''");
    CHECK(QuoteText(u"a", u"") == u"a");
}

TEST_CASE("What does not fit 16 bits overflows") {
    CHECK(MidFixed(Longest, 2, 1) == u"a");
    CHECK(RaisedBy([] { MidFixed(TooLong, 1, 1); }).number == 6);
    CHECK(RaisedBy([] { MidFixed(u"abc", 2, 32767); }).number == 6);
    CHECK(RaisedBy([] { MidFixed(u"abc", -32767, 32767); }).number == 0);
    CHECK(RaisedBy([] { MidFixed(u"abc", -32767); }).number == 6);
    CHECK(RaisedBy([] { DeleteChars(TooLong, 1, 1); }).number == 6);
    CHECK(RaisedBy([] { DeleteChars(u"abc", 32767, 5); }).number == 6);
    CHECK(RaisedBy([] { InsertText(Longest, u"b", 1); }).number == 6);
    CHECK(RaisedBy([] { FixLeft(TooLong, 1); }).number == 6);
    CHECK(RaisedBy([] { FixRight(TooLong); }).number == 6);
    CHECK(RaisedBy([] { FindAnyChar(TooLong, u"a"); }).number == 6);
    CHECK(RaisedBy([] { TranslateChars(TooLong, u"a", u"b"); }).number == 6);
    CHECK(RaisedBy([] { ReplaceAll(Longest, u"a", u"bb"); }).number == 6);
    CHECK(RaisedBy([] { QuoteText(Text(32767, u'"')); }).description == u"Überlauf");
}
