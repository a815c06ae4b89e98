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
