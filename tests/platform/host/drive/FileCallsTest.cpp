#include "Check.h"
#include "host/MachineFiles.h"
#include "platform/FileCalls.h"

using namespace platform;

namespace {

Status Opened(const std::string& path, std::uint32_t access, std::uint32_t disposition) {
    Handle file = -1;
    const Status status = CreateFileA(path, access, disposition, file);
    CHECK((file != 0) == (status == StatusSuccess));
    CloseHandle(file);
    return status;
}

}  // namespace

TEST_CASE("A file of the drive is written, read and found in any letter case") {
    const TestMachine machine;
    Handle file = 0;
    REQUIRE(CreateFileA("C:\\users\\HUGO\\\xC4rger.txt", GenericWrite, CreateNew, file) == 0);
    CHECK(WriteFile(file, "erst") == 0);
    CHECK(FlushFileBuffers(file) == 0);
    CHECK(CloseHandle(file) == 0);
    CHECK(WriteFile(file, "x") == StatusInvalidHandle);
    CHECK(MachineFile("drives/c/Users/hugo/\u00C4rger.txt") == "erst");

    REQUIRE(CreateFileA("c:/USERS/hugo/\xE4RGER.TXT", GenericRead, OpenExisting, file) == 0);
    std::uint32_t read = 7;
    std::string buffer(9, ' ');
    CHECK(ReadFile(file, buffer, read) == 0);
    CHECK(buffer.substr(0, read) == "erst");
    CHECK(CloseHandle(file) == 0);
}

TEST_CASE("Each way of not being able to open a file has its status") {
    const TestMachine machine;
    FileContent("C:\\Users\\file", "");
    FileContent("C:\\Users\\readonly", "");
    FileContent("C:\\locked\\file", "");
    Writable("drives/c/Users/readonly", false);
    Writable("drives/c/locked", false);
    struct {
        std::string path;
        Status reading, creating;
    } const cases[] = {{"C:\\Users\\missing", 2, 0},
                       {"C:\\none\\file", 3, 3},
                       {"C:\\Users\\file\\below", 3, 3},
                       {"\\\\server\\share\\file", 3, 3},
                       {"", 3, 3},
                       {"C:\\Users", 5, 5},
                       {"C:\\Users\\readonly", 0, 5},
                       {"C:\\locked\\new", 2, 5},
                       {"C:\\Users\\a*b", 123, 123},
                       {"C:\\Users\\file\\", 123, 123},
                       {"C:\\Users\\" + std::string(300, 'x'), 123, 123},
                       {"C:\\Users\\..\\..\\..\\Users\\.\\file. .", 0, 0}};
    for (const auto& each : cases) {
        CAPTURE(each.path);
        CHECK(Opened(each.path, GenericRead, OpenExisting) == each.reading);
        CHECK(Opened(each.path, GenericWrite, CreateAlways) == each.creating);
    }
    Writable("drives/c/locked", true);
    CHECK(Opened("C:\\Users\\file", GenericWrite, CreateNew) == StatusFileExists);
}

TEST_CASE("Moving and deleting spare folders and read-only files") {
    const TestMachine machine;
    FileContent("C:\\Users\\new", "new");
    FileContent("C:\\Users\\old", "old");
    Writable("drives/c/Users/old", false);
    CHECK(MoveFileExA("C:\\Users\\new", "C:\\Users\\old") == 5);
    CHECK(DeleteFileA("C:\\Users\\old") == 5);
    CHECK(MoveFileExA("C:\\Users\\new", "C:\\Users\\hugo") == 5);
    CHECK(MoveFileExA("C:\\Users\\none", "C:\\Users\\old") == 2);
    Writable("drives/c/Users/old", true);
    CHECK(MoveFileExA("C:\\Users\\new", "C:\\Users\\OLD") == 0);
    CHECK(FileContent("C:\\Users\\old") == "new");
    CHECK(DeleteFileA("C:\\Users\\old") == 0);
    CHECK(DeleteFileA("C:\\Users\\old") == 2);
}

TEST_CASE("A search finds plain files alone") {
    const TestMachine machine;
    for (const char* const name : {"Beta.txt", "alpha.TXT", "gamma", ".hidden.txt"}) {
        FileContent(std::string("C:\\Users\\hugo\\") + name, "");
    }
    for (const auto& each : {std::pair("C:\\Users\\hugo\\beta.TXT", "Beta.txt"),
                             {"C:\\Users\\hugo\\*.txt", "alpha.TXT"},
                             {"C:\\Users\\hugo\\*b*a*x*", "Beta.txt"},
                             {"C:\\Users\\hugo\\?????", "gamma"},
                             {"C:\\Users\\hugo\\.hidden.txt", ""},
                             {"C:\\Users\\h*", ""},
                             {"C:\\none\\*", ""}}) {
        CAPTURE(each.first);
        CHECK(FindNormalFile(each.first) == each.second);
    }
}
