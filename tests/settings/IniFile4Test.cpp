#include <fstream>

#include "Check.h"
#include "TestMachine.h"
#include "platform/Regional.h"
#include "settings/IniFile4.h"

TEST_CASE_FIXTURE(TestMachine, "Reading a file keeps its headings and items and drops all other lines") {
    const std::string longest(32768, 'x');
    const std::pair<std::string, Text> cases[] = {
        {"[S]\r\na=b=c\r\n\r\n; note\r\nnote\r\n=v\r\n;k=v", u"[S]\r\na=b=c\r\n;k=v\r\n"},
        {"[S]\nbare=\n  c d = e \n\t=f\t\n", u"[S]\r\nbare\r\nc d = e\r\n\t=f\t\r\n"},
        {"[S]\na=1\nb=2\n[T]\nc=3\n[s]\nA=4\n", u"[S]\r\nb=2\r\nA=4\r\n\r\n[T]\r\nc=3\r\n"},
        {"[\xC0\xDC\xDE\x8A]\n\xDF\xD6\xD7\x9F=1\n[\xE0\xFC\xFE\x9A]\n\xDF\xF6\xD7\xFF=2\n\xF7=3",
         u"[ÀÜÞŠ]\r\nßö×ÿ=2\r\n÷=3\r\n"},
        {"[T]\n[S\nb=2\n[]\nlost=1\n", u"[T]\r\nb=2\r\n\r\n[]\r\n"},
        {"[a;b]x=y\nk=v\n", u"b]\r\nk=v\r\n"},
        {"[S]\n_=x\na=1", u"_=x\r\n_=x\r\na=1\r\n"},
        {"[S]\na=1\nb=" + longest + "\nc=3", u"[S]\r\na=1\r\n"},
        {"[S]\n" + std::string(40000, ' ') + "\nc=3", u"[S]\r\nc=3\r\n"},
    };
    for (const auto& [file, stream] : cases) {
        FileContent(ControlFile(), file);
        IniFile4 document;
        document.FilePath(platform::TextFromAnsi(ControlFile()));
        CHECK(document.Stream() == stream);
    }
}

TEST_CASE("Setting an item moves it to the end of its section") {
    IniFile4 document;
    document.Value(u"S", u"a", u"1=2");
    document.Value(u"S", u"[b", u"3");
    document.Value(u"S", u"c", u"");
    document.Value(u"s", u"A", u"4");
    document.Section(u"T");
    CHECK(document.Stream() == u"[S]\r\nc\r\nA=4\r\n\r\n[T]\r\n");
    document.Value(u"S", u"d", u"5=6=");
    document.Value(u"S", u"e=", u"");
    struct {
        Text section, name, value, line;
    } const cases[] = {{u"S", u"a", u"4", u"A=4"},       {u"S", u"[b", u"3", u"[b=3"}, {u"S", u"C", u"c", u"c"},
                       {u"S", u"d", u"5=6=", u"d=5=6="}, {u"S", u"e=", u"e=", u"e="},  {u"S", u"a ", u"", u""},
                       {u"U", u"a", u"", u""},           {u"T", u"_", u"[T]", u"[T]"}};
    for (const auto& each : cases) {
        CHECK(document.Value(each.section, each.name) == each.value);
        CHECK(document.ValueFull(each.section, each.name) == each.line);
    }
    // A line can have up to 32767 characters, including the name and "=".
    const Text longest(32765, u'x');
    document.Value(u"U", u"e", longest);
    CHECK(document.Value(u"U", u"e") == longest);
    document.Value(u"U", u"ee", longest);
    CHECK(RaisedBy([&] { return document.Value(u"U", u"ee"); }).number == 6);
    CHECK(RaisedBy([&] { document.Sections()->Add(u"keyU", {}); }).number == 5);
    // If a section fails, the error's description replaces the rest of the text.
    document.Sections()->Add(u"KEYV", {});
    document.Section(u"W");
    CHECK(document.Stream().ends_with(u"=" + longest + u"\r\n\r\nIndex außerhalb des gültigen Bereichs"));
}

TEST_CASE_FIXTURE(TestMachine, "Documents can share sections until one of the documents is cleared") {
    FileContent(ControlFile(), "a=1\n[S]\n");
    IniFile4 document;
    document.FilePath(platform::TextFromAnsi(ControlFile()));
    CHECK(document.Stream() == u"[S]\r\n");
    document.ReadFile();  // items above the first heading belong to the section that was read last
    IniFile4 other;
    other.Sections(document.Sections());
    CHECK(other.Stream() == u"[S]\r\na=1\r\n");
    document.FilePath({});
    CHECK(document.Stream().empty());
    CHECK(other.Value(u"S", u"a") == u"1");
    other.Sections(nullptr);
    other.Value(u"T", u"b", u"2");
    CHECK(other.Stream() == u"[T]\r\nb=2\r\n");
}

TEST_CASE_FIXTURE(TestMachine, "An existing file is replaced only if the caller asks for it") {
    const Text path = platform::TextFromAnsi(ControlFile());
    FileContent(ControlFile(), "earlier");
    IniFile4 document;
    document.WriteFile(path, true);  // ignored, because the document is empty
    document.Value(u"Ä", u"b", u"2");
    CHECK(RaisedBy([&] { document.WriteFile(); }).number == 58);
    CHECK(FileContent(ControlFile()) == "earlier");
    document.WriteFile({}, true);
    document.Delete();
    CHECK_FALSE(document.Exists());
    document.WriteFile();
    CHECK((document.Exists() && FileContent(ControlFile()) == "[\xC4]\r\nb=2\r\n"));
    const std::ifstream reader(OnDisk(ControlFile()));  // on Windows, an open file can't be replaced
    document.Value(u"Ä", u"c", u"3");
    document.WriteFile({}, true);
    CHECK(FileContent(ControlFile()) == "[\xC4]\r\nb=2\r\nc=3\r\n");
    CHECK(RaisedBy([&] { document.WriteFile(path + u"\\missing\\x"); }).number == 76);
}
