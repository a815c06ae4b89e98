#include <sys/stat.h>

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
    CHECK(WriteFile(file, "x") == StatusInvalidHandle);
    return status;
}

}  // namespace

TEST_CASE("A file is found in any letter case, and what cannot be opened, replaced or deleted has its status") {
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
                       {"C:\\Users\\file\\below", 3, 3},
                       {"\\\\server\\share\\file", 3, 3},
                       {"C:\\Users", 5, 5},
                       {"C:\\Users\\readonly", 0, 5},
                       {"C:\\locked\\new", 2, 5},
                       {"C:\\Users\\file\\", 123, 123},
                       {"C:\\Users\\" + std::string(300, 'x'), 206, 206},
                       {"C:\\Users\\..\\..\\..\\Users\\.\\file", 0, 0}};
    for (const auto& each : cases) {
        CAPTURE(each.path);
        CHECK(Opened(each.path, GenericRead, OpenExisting) == each.reading);
        CHECK(Opened(each.path, GenericWrite, CreateAlways) == each.creating);
    }
    Writable("drives/c/locked", true);
    CHECK(Opened("C:\\Users\\file", GenericWrite, CreateNew) == StatusFileExists);
    CHECK(std::filesystem::exists(OnMachine("drives/c/Users/\u00C4rger.txt")));
    CHECK(MoveFileExA("C:\\Users\\file", "C:\\Users\\readonly") == 5);
    CHECK(MoveFileExA("C:\\Users\\none", "C:\\Users\\file") == 2);
    CHECK(DeleteFileA("C:\\Users\\readonly") == 5);
    CHECK(DeleteFileA("C:\\Users\\none") == 2);
}

TEST_CASE("A file takes another's place with the owner and mode of that one, through a link too") {
    const TestMachine machine;
    FileContent("C:\\new", "new");
    FileContent("C:\\away\\old", "old");
    CHECK(ReplaceFileA("C:\\away\\none", "C:\\new") == 2);
    std::filesystem::create_symlink("away/old", OnMachine("drives/c/link"));
    chmod(OnDisk("C:\\away\\old").c_str(), 0640);
    const bool changed = chown(OnDisk("C:\\away\\old").c_str(), 1, 2) == 0;  // root alone may
    CHECK(ReplaceFileA("C:\\link", "C:\\new") == 0);
    struct stat rights {};
    REQUIRE(stat(OnDisk("C:\\away\\old").c_str(), &rights) == 0);
    CHECK((rights.st_mode & 07777U) == 0640);
    CHECK((!changed || (rights.st_uid == 1 && rights.st_gid == 2)));
    CHECK(FileContent("C:\\away\\old") == "new");
    CHECK(!std::filesystem::exists(OnDisk("C:\\new")));

    FileContent("C:\\new", "newer");
    Writable("drives/c/away", false);
    CHECK(ReplaceFileA("C:\\link", "C:\\new") == 5);
    CHECK(Opened("C:\\link", GenericWrite, CreateAlways) == 0);
    Writable("drives/c/away", true);
    Writable("drives/c/away/old", false);
    CHECK(ReplaceFileA("C:\\link", "C:\\new") == 5);
}
