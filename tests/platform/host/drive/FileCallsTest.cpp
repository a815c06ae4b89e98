#include <sys/stat.h>

#include "Check.h"
#include "common/TextFile.h"
#include "host/MachineFiles.h"
#include "platform/FileCalls.h"

using namespace platform;

namespace {

Status Open(const std::string& path, std::uint32_t access, std::uint32_t disposition) {
    Handle file = -1;
    const Status status = CreateFileA(path, access, disposition, file);
    CHECK((file != 0) == (status == StatusSuccess));
    CHECK((CloseHandle(file) == StatusSuccess) == (file != 0));
    return status;
}

}  // namespace

TEST_CASE("File calls are case-insensitive and return the expected status on failure") {
    const TestMachine machine;
    FileContent("C:\\Users\\file", "");
    FileContent("C:\\Users\\readonly", "");
    FileContent("C:\\locked\\file", "");
    Writable("drives/c/Users/readonly", false);
    Writable("drives/c/locked", false);
    struct {
        std::string path;
        Status reading, creating;
    } const cases[] = {{"C:\\Users\\\xC4rger.txt", 2, 0},
                       {"c:/USERS/\xE4RGER.TXT", 0, 0},
                       {"C:\\none\\file", 3, 3},
                       {"F:\\", 3, 3},
                       {"C:\\Users\\file\\below", 3, 3},
                       {"\\\\server\\share\\file", 3, 3},
                       {"C:\\Users", 5, 5},
                       {"C:\\Users\\readonly", 0, 5},
                       {"C:\\locked\\new", 2, 5},
                       {"C:\\Users\\" + std::string(300, 'x'), 206, 206},
                       {"C:\\Users\\..\\..\\Users\\.\\file", 0, 0}};
    for (const auto& each : cases) {
        CAPTURE(each.path);
        CHECK(Open(each.path, GenericRead, OpenExisting) == each.reading);
        CHECK(Open(each.path, GenericWrite, CreateAlways) == each.creating);
    }
    CHECK(MoveFileExA("C:\\Users\\file", "C:\\Users\\readonly") == 5);
    CHECK(MoveFileExA("C:\\Users\\file", "C:\\locked\\file") == 5);
    CHECK(DeleteFileA("C:\\Users\\readonly") == 5);
    CHECK(DeleteFileA("C:\\locked\\file") == 5);
    Writable("drives/c/locked", true);
    CHECK(std::filesystem::exists(OnMachine("drives/c/Users/\u00C4rger.txt")));
}

TEST_CASE("Overwriting a file keeps its mode and follows links") {
    const TestMachine machine;
    const std::string file = OnDisk("C:\\away\\old").native();
    FileContent("C:\\away\\old", "old");
    std::filesystem::create_symlink("away/old", OnMachine("drives/c/link"));
    std::filesystem::create_symlink("missing", OnMachine("drives/c/dangling"));
    chmod(file.c_str(), 0640);
    WriteBytes(u"C:\\link", "new", true);
    struct stat permissions {};
    REQUIRE(stat(file.c_str(), &permissions) == 0);
    CHECK((permissions.st_mode & 07777U) == 0640);
    CHECK(FileContent("C:\\away\\old") == "new");
    CHECK(Open("C:\\dangling", GenericWrite, CreateNew) == StatusFileExists);
    Writable("drives/c/away/old", false);
    CHECK(RaisedBy([] { WriteBytes(u"C:\\link", "newer", true); }).number == 75);
}
