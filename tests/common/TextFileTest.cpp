
#include "Check.h"
#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/Regional.h"

TEST_CASE("Every kind of line end ends a line, at every place of the buffer") {
    const TestMachine machine;
    struct Case {
        std::string bytes;
        std::vector<Text> lines;
    };
    std::vector<Case> cases = {{"", {}},
                               {"a\n", {u"a"}},
                               {"a\r\nb\nc\rd", {u"a", u"b", u"c", u"d"}},
                               {"\r\n\r\r\n\n", {u"", u"", u"", u""}},
                               {"\xE4\x80\r\n", {u"ä€"}}};
    for (const std::size_t length : {65534U, 65535U, 65536U, 65537U}) {
        cases.push_back({std::string(length, 'x') + "\r\nend", {Text(length, u'x'), u"end"}});
    }
    for (const Case& each : cases) {
        FileContent(machine.ControlFile(), each.bytes);
        TextFileReader file(platform::TextFromAnsi(machine.ControlFile()));
        std::vector<Text> lines;
        while (!file.AtEnd()) {
            lines.push_back(file.ReadLine());
        }
        CHECK(lines == each.lines);
    }
}

TEST_CASE("A file is replaced whole at the commit, or not at all") {
    const TestMachine machine;
    const Text path = platform::TextFromAnsi(machine.ControlFile());
    FileContent(machine.ControlFile(), "earlier");
    for (const bool committed : {false, true}) {
        TextFileWriter file(path);
        file.WriteLine(u"Löschen");
        file.Write(Text(100000, u'x'));
        CHECK(FileContent(machine.ControlFile()) == "earlier");
        if (committed) {
            file.Commit();
        }
    }
    CHECK(FileContent(machine.ControlFile()) == "L\xF6schen\r\n" + std::string(100000, 'x'));
    CHECK(RaisedBy([&] { TextFileWriter file(path + u"\\x\\y"); }).description == u"Pfad nicht gefunden");
}
