#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

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

TEST_CASE_FIXTURE(TestMachine, "A file is written whole over an earlier one only where that is asked for") {
    const Text path = platform::TextFromAnsi(ControlFile());
    WriteTextFile(path, u"new", false);
    CHECK(FileContent(ControlFile()) == "new");
    CHECK(RaisedBy([&] { WriteTextFile(path, u"other", false); }).number == 58);
    CHECK(FileContent(ControlFile()) == "new");
    WriteTextFile(path, Text(100000, u'Ä') + u"\r\n", true);
    CHECK(FileContent(ControlFile()) == std::string(100000, '\xC4') + "\r\n");
    std::filesystem::remove(OnDisk(ControlFile()));
    WriteTextFile(path, u"again", true);
    CHECK(FileContent(ControlFile()) == "again");
}

TEST_CASE_FIXTURE(TestMachine,
                  "A file in whose folder none can be made, or whose name leaves no room, is written too") {
    const std::filesystem::path folder = OnDisk(ControlFile()).parent_path();
    const std::string path = ControlFile().substr(0, ControlFile().rfind('\\') + 1);
    std::size_t written = 0;
    for (std::size_t length = 150; length <= 255; ++length) {
        const std::string name(length, 'n');
        const Text file = platform::TextFromAnsi(path + name);
        std::ofstream(folder / name) << "earlier";
        if (RaisedBy([&] { TextFileReader reader(file); }).number == 0) {
            WriteTextFile(file, u"new", true);
            CHECK(FileContent(path + name) == "new");
            ++written;
        }
    }
    CHECK(written > 0);
    FileContent(ControlFile(), "earlier");
    std::filesystem::permissions(folder, std::filesystem::perms::owner_write, std::filesystem::perm_options::remove);
    WriteTextFile(platform::TextFromAnsi(ControlFile()), u"new", true);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    CHECK(FileContent(ControlFile()) == "new");
}
