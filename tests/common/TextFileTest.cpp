#include <string>
#include <vector>

#include "Check.h"
#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/Regional.h"

namespace {

std::vector<Text> Lines(const Text& path) {
    TextFileReader file(path);
    std::vector<Text> lines;
    while (!file.AtEnd()) {
        lines.push_back(file.ReadLine());
    }
    return lines;
}

}  // namespace

TEST_CASE("Every kind of line end ends a line, at every place of the buffer") {
    const TestMachine machine;
    const Text path = platform::TextFromAnsi(machine.ControlFile());
    struct {
        std::string bytes;
        std::vector<Text> lines;
    } const cases[] = {
        {"", {}},
        {"a", {u"a"}},
        {"a\n", {u"a"}},
        {"a\r\nb\nc\rd", {u"a", u"b", u"c", u"d"}},
        {"\r\n\r\r\n\n", {u"", u"", u"", u""}},
        {"\xE4\x80\r\n", {u"ä€"}},
    };
    for (const auto& each : cases) {
        FileContent(machine.ControlFile(), each.bytes);
        CHECK(Lines(path) == each.lines);
    }
    for (const std::size_t length : {65534U, 65535U, 65536U, 65537U}) {
        FileContent(machine.ControlFile(), std::string(length, 'x') + "\r\nend");
        CHECK(Lines(path) == std::vector<Text>{Text(length, u'x'), u"end"});
    }
}

TEST_CASE("A file is replaced whole at the commit, or not at all") {
    const TestMachine machine;
    const Text path = platform::TextFromAnsi(machine.ControlFile());
    FileContent(machine.ControlFile(), "earlier");
    {
        TextFileWriter file(path);
        file.WriteLine(Text(100000, u'x'));
        CHECK(FileContent(machine.ControlFile()) == "earlier");
    }
    CHECK(FileContent(machine.ControlFile()) == "earlier");
    {
        TextFileWriter file(path);
        file.WriteLine(u"Löschen");
        file.Write(u"Ende");
        file.Commit();
    }
    CHECK(FileContent(machine.ControlFile()) == "L\xF6schen\r\nEnde");
}

TEST_CASE("What cannot be opened raises the language's error") {
    const TestMachine machine;
    const Text path = platform::TextFromAnsi(machine.ControlFile());
    CHECK(RaisedBy([&] { TextFileReader file(path); }).number == 53);
    CHECK(RaisedBy([&] { TextFileReader file(path + u"\\x\\y"); }).number == 76);
    CHECK(RaisedBy([&] { TextFileWriter file(path + u"\\x\\y"); }).description == u"Pfad nicht gefunden");
}
