#include <fstream>

#include "Check.h"
#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/Regional.h"

TEST_CASE_FIXTURE(TestMachine, "CR LF, LF and CR end a line, even across a buffer boundary") {
    std::vector<std::pair<std::string, std::vector<Text>>> cases = {
        {"", {}}, {"a\n", {u"a"}}, {"a\r\nb\nc\rd", {u"a", u"b", u"c", u"d"}}, {"\r\n\r\r\n\n", {u"", u"", u"", u""}}};
    for (const std::size_t length : {65534U, 65535U, 65536U, 65537U, 200000U}) {
        cases.emplace_back(std::string(length, 'x') + "\r\nend", std::vector{Text(length, u'x'), Text(u"end")});
    }
    for (const auto& [bytes, expected] : cases) {
        FileContent(ControlFile(), bytes);
        TextFileReader file(platform::TextFromAnsi(ControlFile()));
        std::vector<Text> lines;
        while (!file.AtEnd()) {
            lines.push_back(file.ReadLine());
        }
        CHECK(lines == expected);
    }
}

TEST_CASE_FIXTURE(TestMachine, "WriteTextFile replaces an existing file only if asked to") {
    const Text path = platform::TextFromAnsi(ControlFile());
    WriteTextFile(path, u"new", false);
    CHECK(RaisedBy([&] { WriteTextFile(path, u"other", false); }).number == 58);
    CHECK(FileContent(ControlFile()) == "new");
    WriteTextFile(path, Text(100000, u'Ä') + u"\r\n", true);
    CHECK(FileContent(ControlFile()) == std::string(100000, '\xC4') + "\r\n");
    const std::ifstream reader(OnDisk(ControlFile()));  // on Windows, an open file can't be replaced
    WriteTextFile(path, u"again", true);
    CHECK(FileContent(ControlFile()) == "again");
}
