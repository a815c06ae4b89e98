#include <SQLiteCpp/Database.h>

#include <chrono>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "platform/ComponentCalls.h"
#include "platform/RegistryCalls.h"

using namespace platform;

namespace {

constexpr Status Damaged = 1009;
constexpr Status Busy = 170;

Status Create(const std::string& path, Handle root = KeyLocalMachine) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    return RegCreateKeyExA(root, path, "", 0, KeyQueryValue, key, disposition);
}

Status Open(const std::string& path, std::int32_t access) {
    Handle key = 0;
    return RegOpenKeyExA(KeyLocalMachine, path, 0, access, key);
}

bool NamesFile(Status status) {
    return StatusText(status).find(u"Registrierungsdatei \"" + OnMachine("machine.db").u16string()) != Text::npos;
}

// Opens a registry file directly, as the sqlite3 shell does.
SQLite::Database Database(const std::string& file) {
    return {OnMachine(file).native(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
}

}  // namespace

TEST_CASE("Roots share keys, a NUL ends a path, and key names have at most 255 characters") {
    const TestMachine machine;
    CHECK(Open("Software", KeyQueryValue | KeySetValue) == StatusSuccess);
    CHECK_FALSE(std::filesystem::exists(OnMachine("machine.db")));
    REQUIRE(Create({"Software\\\\One\\two\0\\", 19}, KeyCurrentUser) == StatusSuccess);  // a NUL ends the path
    REQUIRE(Create("\\.txt\\", KeyClassesRoot) == StatusSuccess);  // only this root allows a leading backslash
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes\\.TXT") == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Classes") == StatusAccessDenied);
    CHECK((Create(std::string(255, 'k')) == StatusSuccess && Create(std::string(256, 'k')) == StatusInvalidParameter));
    CHECK(RawKeyExists(KeyUsers, "S-1-5-21-0-0-0-1000\\SOFTWARE\\one\\Two"));
}

TEST_CASE("Calls check the handle's rights, then whether its key still exists") {
    const TestMachine machine;
    Handle reading = 0;
    Handle writing = 0;
    REQUIRE(Create("k") == StatusSuccess);
    REQUIRE(RegOpenKeyExA(KeyLocalMachine, "k", 0, KeyQueryValue, reading) == StatusSuccess);
    REQUIRE(RegOpenKeyExA(KeyLocalMachine, "k", 0, KeySetValue, writing) == StatusSuccess);
    REQUIRE(RegDeleteKeyA(KeyLocalMachine, "k") == StatusSuccess);
    REQUIRE(Create("k") == StatusSuccess);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    CHECK(RegQueryValueExA(writing, "n", type, {}, size) == StatusAccessDenied);
    CHECK(RegSetValueExA(reading, "n", RegBinary, "x") == StatusAccessDenied);
    CHECK(RegQueryValueExA(reading, "n", type, {}, size) == StatusKeyDeleted);
    CHECK(RegSetValueExA(writing, "n", RegBinary, "x") == StatusKeyDeleted);
    CHECK(RegDeleteValueA(writing, "n") == StatusKeyDeleted);
    CHECK(Create("x", writing) == StatusKeyDeleted);
    CHECK(RegCloseKey(writing) == StatusSuccess);
    CHECK(RegCloseKey(writing) == StatusInvalidHandle);
}

TEST_CASE("A registry file's view shows all values, and external changes take effect") {
    const TestMachine machine;
    RawValueSet(KeyClassesRoot, "\xE4", "Zahl \xDC", RawNumber(0xFFFFFFFE));
    RawValueSet(KeyClassesRoot, "\xE4", "", RawText("a \x80 b"));
    RawValueSet(KeyClassesRoot, "\xE4", "b", {RegBinary, std::string("\xFF\x00", 2)});
    RawValueSet(KeyCurrentUser, "k", "n", RawText(""));
    const std::string path = "HKEY_LOCAL_MACHINE\\Software\\Classes\\\u00E4|";
    CHECK(Database("machine.db")
              .execAndGet("SELECT group_concat(path || '|' || name || '|' || type || '|' || value, '; ') FROM registry")
              .getString() ==
          path + "Zahl \u00DC|REG_DWORD|4294967294; " + path + "|REG_SZ|a \u20AC b; " + path + "b|REG_BINARY|FF00");
    CHECK(Database("user.db").execAndGet("SELECT path || typeof(value) FROM registry").getString() ==
          "HKEY_CURRENT_USER\\ktext");
    RawValueSet(KeyCurrentUser, "k", "n", RawText(""));  // the same value, which doesn't change the file
    Database("user.db").exec("UPDATE key SET name = 'l', path = replace(path, 'K', 'L') WHERE name = 'k'");
    CHECK_FALSE(RawKeyExists(KeyCurrentUser, "k"));
}

TEST_CASE("A read-only registry file rejects changes; an unreadable one rejects all calls") {
    const TestMachine machine;
    RawValueSet(KeyLocalMachine, "k", "n", RawNumber(1));
    // The writer leaves an unfinished change in the file.
    const auto writer = Started([]() -> int {
        SQLite::Database database = Database("machine.db");
        database.exec(
            "PRAGMA cache_size = 1; BEGIN; CREATE TABLE large (n); UPDATE value SET data = 2;"
            "WITH RECURSIVE row (n) AS (VALUES (1) UNION ALL SELECT n + 1 FROM row LIMIT 500)"
            "INSERT INTO large SELECT zeroblob(1000) FROM row");
        _exit(0);
    });
    CHECK(ExitCode(writer) == 0);
    std::filesystem::permissions(OnMachine(""), std::filesystem::perms(0555));
    for (const unsigned mode : {0444U, 0U}) {
        std::filesystem::permissions(OnMachine("machine.db"), std::filesystem::perms(mode));
        CHECK(ExitCode(Started([&] {
                  static_cast<void>(seteuid(65534));  // fails unless the test runs as root
                  const bool isCommitted = RawValue(KeyLocalMachine, "k", "n") == RawNumber(1);
                  return isCommitted == (mode != 0) ? Open("k", KeyQueryValue) : -1;
              })) == (mode == 0 ? StatusAccessDenied : StatusSuccess));
    }
    std::filesystem::permissions(OnMachine(""), std::filesystem::perms(0755));
    Writable("machine.db", true);
    Handle open = 0;
    REQUIRE(RegOpenKeyExA(KeyLocalMachine, "k", 0, KeySetValue, open) == StatusSuccess);
    Writable("machine.db", false);
    CHECK(RegSetValueExA(open, "n", RegDword, "1234") == StatusAccessDenied);
    CHECK(Open("k", KeySetValue) == StatusAccessDenied);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "k") == StatusAccessDenied);
    CHECK(Create("new") == StatusAccessDenied);
    CHECK(NamesFile(StatusAccessDenied));
    CHECK(Create("k") == StatusSuccess);
}

TEST_CASE("An invalid registry file is reported with its path and left unchanged") {
    const TestMachine machine;
    const std::filesystem::path file = OnMachine("machine.db");
    for (const std::string& content : {std::string("x"), std::string(511, 'x')}) {
        DiskFile(file, content);
        CHECK((Open("Software", KeyQueryValue) == Damaged && Create("new") == Damaged));
        CHECK(DiskFile(file) == content);
    }
    ObjectReference object = 0;
    CHECK(CreateObject(u"Some.Class", object) == Damaged);
    CHECK(NamesFile(Damaged));
    std::filesystem::remove(file);
    Database("machine.db").exec("CREATE TABLE mine (n)");
    CHECK(Create("new") == Damaged);
    CHECK(Database("machine.db").execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 1);
}

TEST_CASE("Processes wait for each other's registry changes, at most three seconds in total") {
    const TestMachine machine;
    std::vector<pid_t> processes;
    for (const std::string process : {"a", "b", "c", "d"}) {
        processes.push_back(Started([&] {
            for (int count = 0; count < 100; ++count) {
                RawValueSet(KeyLocalMachine, "k", process + std::to_string(count), RawNumber(1));
            }
            return 0;
        }));
    }
    for (const pid_t process : processes) {
        CHECK(ExitCode(process) == 0);
    }
    SQLite::Database other = Database("machine.db");
    CHECK(other.execAndGet("SELECT count(*) FROM value").getInt() == 400);
    other.exec("BEGIN IMMEDIATE");
    CHECK(Open("k", KeySetValue) == StatusSuccess);
    other.exec("INSERT INTO key VALUES (99, 2, 'x', 'x'); COMMIT; BEGIN EXCLUSIVE");
    const auto start = std::chrono::steady_clock::now();
    for (int call = 0; call < 5; ++call) {
        CHECK(Open("k", KeySetValue) == Busy);
    }
    CHECK(NamesFile(Busy));
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(3));
    other.exec("COMMIT");
    CHECK(Open("k", KeySetValue) == StatusSuccess);
}
