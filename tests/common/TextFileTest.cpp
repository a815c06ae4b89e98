
#include "Check.h"
#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/Regional.h"

TEST_CASE_FIXTURE(TestMachine, "Every kind of line end ends a line, at every place of the buffer") {
    struct Case {
        std::string bytes;
        std::vector<Text> lines;
    };
    std::vector<Case> cases = {
        {"", {}}, {"a\n", {u"a"}}, {"a\r\nb\nc\rd", {u"a", u"b", u"c", u"d"}}, {"\r\n\r\r\n\n", {u"", u"", u"", u""}}};
    for (const std::size_t length : {65534U, 65535U, 65536U, 65537U, 200000U}) {
        cases.push_back({std::string(length, 'x') + "\r\nend", {Text(length, u'x'), u"end"}});
    }
    for (const Case& each : cases) {
        FileContent(ControlFile(), each.bytes);
        TextFileReader file(platform::TextFromAnsi(ControlFile()));
        std::vector<Text> lines;
        while (!file.AtEnd()) {
            lines.push_back(file.ReadLine());
        }
        CHECK(lines == each.lines);
    }
}

TEST_CASE_FIXTURE(TestMachine, "A file is replaced whole at the commit, or not at all") {
    FileContent(ControlFile(), "earlier");
    for (const bool committed : {false, true}) {
        TextFileWriter file(platform::TextFromAnsi(ControlFile()));
        file.WriteLine(Text(100000, u'x'));
        CHECK(FileContent(ControlFile()) == "earlier");
        if (committed) {
            file.Commit();
        }
    }
    CHECK(FileContent(ControlFile()) == std::string(100000, 'x') + "\r\n");
}
