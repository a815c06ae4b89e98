#include <SQLiteCpp/Database.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ComponentCalls.h"
#include "platform/Regional.h"

using namespace platform;

namespace {

constexpr Status Damaged = 1009;
constexpr Status Busy = 170;

Status Create(const std::string& path) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    return RegCreateKeyExA(KeyLocalMachine, path, "", 0, KeyQueryValue, key, disposition);
}

Status Open(const std::string& path, std::int32_t access) {
    Handle key = 0;
    return RegOpenKeyExA(KeyLocalMachine, path, 0, access, key);
}

// What the sqlite3 shell prints.
std::string Shell(const std::string& file, const std::string& statement) {
    const std::string output = OnMachine("output").native();
    const std::string command =
        "sqlite3 '" + OnMachine(file).native() + "' \"" + statement + "\" >'" + output + "' 2>&1";
    CHECK(std::system(command.c_str()) == 0);
    return DiskFile(OnMachine("output")).value_or("");
}

}  // namespace

TEST_CASE("Nothing is made by looking, and an empty folder or file is an empty machine") {
    const TestMachine machine;
    CHECK(Open("Software\\Classes", KeyQueryValue | KeySetValue) == StatusSuccess);
    CHECK(Open("Software\\Other", KeyQueryValue) == StatusFileNotFound);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Other") == StatusFileNotFound);
    CHECK_FALSE(std::filesystem::exists(OnMachine("machine.db")));
}

TEST_CASE("The sqlite3 shell reads the values") {
    const TestMachine machine;
    RawValueSet(KeyClassesRoot, "\xE4", "Zahl \xDC", RawNumber(0xFFFFFFFE));
    RawValueSet(KeyClassesRoot, "\xE4", "", RawText("a \x80 b"));
    RawValueSet(KeyClassesRoot, "\xE4", "b", {RegBinary, std::string("\x00\xFF", 2)});
    RawValueSet(KeyCurrentUser, "k", "n", RawText(""));
    const std::string path = "HKEY_LOCAL_MACHINE\\Software\\Classes\\\u00E4|";
    CHECK(Shell("machine.db", "SELECT * FROM registry") ==
          path + "Zahl \u00DC|REG_DWORD|4294967294\n" + path + "|REG_SZ|a \u20AC b\n" + path + "b|REG_BINARY|00FF\n");
    CHECK(Shell("user.db", "SELECT path, typeof(value), value FROM registry") == "HKEY_CURRENT_USER\\k|text|\n");
}

TEST_CASE("Processes that change one machine at once lose nothing of each other") {
    constexpr int changes = 100;
    const TestMachine machine;
    std::vector<pid_t> processes;
    for (const std::string process : {"a", "b", "c", "d"}) {
        processes.push_back(Started([&] {
            for (int count = 0; count < changes; ++count) {
                RawValueSet(KeyLocalMachine, "Table", process + std::to_string(count), RawNumber(1));
                RawValueSet(KeyLocalMachine, "Table", "shared", RawText(process));
            }
            return RawValueNames(KeyLocalMachine, "Table").size() > changes ? 0 : 1;
        }));
    }
    for (const pid_t process : processes) {
        CHECK(ExitCode(process) == 0);
    }
    CHECK(RawValueNames(KeyLocalMachine, "Table").size() == 4 * changes + 1);
}

TEST_CASE("A file without the owner's right to write refuses changes, whoever the process is, and is read") {
    const TestMachine machine;
    RawValueSet(KeyLocalMachine, "k", "n", RawNumber(1));
    Handle open = 0;
    REQUIRE(RegOpenKeyExA(KeyLocalMachine, "k", 0, KeySetValue, open) == StatusSuccess);
    Writable("machine.db", false);
    CHECK(Open("k", KeySetValue) == StatusAccessDenied);
    CHECK(Open("k", KeyQueryValue | KeyCreateSubKey) == StatusAccessDenied);
    CHECK(RegSetValueExA(open, "n", RegDword, "1234") == StatusAccessDenied);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "k") == StatusAccessDenied);
    CHECK(Create("new") == StatusAccessDenied);
    CHECK(Create("k") == StatusSuccess);
    CHECK(RawValue(KeyLocalMachine, "k", "n") == RawNumber(1));
    CHECK_FALSE(std::filesystem::exists(OnMachine("machine.db-shm")));
    Writable("machine.db", true);
    CHECK(RegSetValueExA(open, "n", RegDword, "1234") == StatusSuccess);
}

TEST_CASE("A full disk refuses the change, and what was there stays") {
    const TestMachine machine;
    const pid_t process = Started([] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{300000, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
        Handle key = 0;
        std::uint32_t disposition = 0;
        RegCreateKeyExA(KeyLocalMachine, "k", "", 0, KeySetValue, key, disposition);
        Status status = StatusSuccess;
        for (int count = 0; status == StatusSuccess && count < 100; ++count) {
            status = RegSetValueExA(key, std::to_string(count), RegBinary, std::string(3000, 'x'));
        }
        return status == StatusDiskFull && RegDeleteValueA(key, "missing") == StatusFileNotFound ? 0 : 1;
    });
    CHECK(ExitCode(process) == 0);
    const std::string last = RawValueNames(KeyLocalMachine, "k").at(5);
    CHECK(RawValue(KeyLocalMachine, "k", last) == RawData{RegBinary, std::string(3000, 'x')});
    CHECK(Create("further") == StatusSuccess);
}

TEST_CASE("A file that is no registry is told with its path, and left as it is") {
    const TestMachine machine;
    for (const std::string& content : {std::string(511, 'x'), std::string(5000, 'x')}) {
        std::filesystem::remove(OnMachine("machine.db"));
        DiskFile(OnMachine("machine.db"), content);
        CHECK(Open("Software", KeyQueryValue) == Damaged);
        CHECK(Create("new") == Damaged);
        CHECK(DiskFile(OnMachine("machine.db")) == content);
    }
    ObjectReference object = 0;
    CHECK(CreateObject(u"Some.Class", object) == Damaged);
    CHECK(StatusText(Damaged).find(OnMachine("machine.db").u16string()) != Text::npos);
    std::filesystem::remove(OnMachine("machine.db"));
    CHECK(Shell("machine.db", "CREATE TABLE mine (n)").empty());
    CHECK(Create("new") == Damaged);
    CHECK(Shell("machine.db", ".tables") == "mine\n");
}

TEST_CASE("A file that another program keeps locked is told with its path, after a while") {
    const TestMachine machine;
    RawValueSet(KeyCurrentUser, "k", "n", RawNumber(1));
    std::optional<SQLite::Database> other(std::in_place, OnMachine("user.db").native(), SQLite::OPEN_READWRITE);
    other->exec("BEGIN IMMEDIATE");
    CHECK(RawValue(KeyCurrentUser, "k", "n") == RawNumber(1));
    Handle key = 0;
    REQUIRE(RegOpenKeyExA(KeyCurrentUser, "k", 0, KeySetValue, key) == StatusSuccess);
    CHECK(RegSetValueExA(key, "n", RegBinary, "x") == Busy);
    CHECK(StatusText(Busy).find(OnMachine("user.db").u16string()) != Text::npos);
    other.reset();
    CHECK(RegSetValueExA(key, "n", RegBinary, "x") == StatusSuccess);
}
