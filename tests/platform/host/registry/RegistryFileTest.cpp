#include <SQLiteCpp/Database.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>

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

bool NamesFile(Status status, const std::string& file) {
    return StatusText(status).find(u"Registrierungsdatei \"" + OnMachine(file).u16string()) != Text::npos;
}

// Runs a statement in the sqlite3 shell and returns what the shell prints.
std::string Shell(const std::string& file, const std::string& statement) {
    const std::string output = OnMachine("output").native();
    const std::string command =
        "sqlite3 '" + OnMachine(file).native() + "' \"" + statement + "\" >'" + output + "' 2>&1";
    CHECK(std::system(command.c_str()) == 0);
    return DiskFile(OnMachine("output")).value_or("");
}

}  // namespace

TEST_CASE("Reading creates no registry file; missing tables in an existing file are created") {
    const TestMachine machine;
    CHECK(Open("Software\\Classes", KeyQueryValue | KeySetValue) == StatusSuccess);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "Software\\Other") == StatusFileNotFound);
    CHECK_FALSE(std::filesystem::exists(OnMachine("machine.db")));
    // Earlier releases switched to a write-ahead log before they created the tables.
    Shell("machine.db", "PRAGMA user_version = 1; PRAGMA journal_mode = WAL");
    CHECK(Open("Software\\Classes", KeyQueryValue) == StatusSuccess);
    CHECK(Create("k") == StatusSuccess);
}

TEST_CASE("A process without write access sees only committed changes or gets error 5") {
    const TestMachine machine;
    for (const std::string change : {"", "UPDATE value SET data = 2;"}) {
        if (!change.empty()) {
            RawValueSet(KeyLocalMachine, "k", "n", RawNumber(1));
        }
        const auto writer = Started([&]() -> int {
            SQLite::Database database(OnMachine("machine.db").native(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            database.exec("PRAGMA cache_size = 1; BEGIN; CREATE TABLE large (n);" + change +
                          "WITH RECURSIVE row (n) AS (VALUES (1) UNION ALL SELECT n + 1 FROM row LIMIT 500)"
                          "INSERT INTO large SELECT zeroblob(1000) FROM row");
            _exit(0);  // without a rollback
        });
        CHECK(ExitCode(writer) == 0);
        const auto exitCode = [&](unsigned mode) {
            return ExitCode(Started([&] {
                std::filesystem::permissions(OnMachine("machine.db"), std::filesystem::perms(mode));
                std::filesystem::permissions(OnMachine(""), std::filesystem::perms(0555));
                static_cast<void>(seteuid(65534));  // fails unless the test runs as root
                const Status status = Open("k", KeyQueryValue);
                return status != StatusSuccess || RawValue(KeyLocalMachine, "k", "n") == RawNumber(1) ? status : -1;
            }));
        };
        CHECK(exitCode(0444) == (change.empty() ? StatusFileNotFound : StatusSuccess));
        CHECK(exitCode(0000) == StatusAccessDenied);
        std::filesystem::permissions(OnMachine(""), std::filesystem::perms(0755));
        std::filesystem::remove(OnMachine("machine.db"));
        std::filesystem::remove(OnMachine("machine.db-journal"));
    }
}

TEST_CASE("The sqlite3 shell shows the values") {
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

TEST_CASE("Concurrent processes don't lose each other's registry changes") {
    const TestMachine machine;
    std::vector<pid_t> processes;
    for (const std::string process : {"a", "b", "c", "d"}) {
        processes.push_back(Started([&] {
            for (int count = 0; count < 100; ++count) {
                RawValueSet(KeyLocalMachine, "Table", process + std::to_string(count), RawNumber(1));
            }
            return 0;
        }));
    }
    for (const pid_t process : processes) {
        CHECK(ExitCode(process) == 0);
    }
    CHECK(RawValueNames(KeyLocalMachine, "Table").size() == 400);
}

TEST_CASE("A read-only registry file refuses changes but shows those of other processes") {
    const TestMachine machine;
    RawValueSet(KeyLocalMachine, "k", "n", RawNumber(1));
    Handle open = 0;
    REQUIRE(RegOpenKeyExA(KeyLocalMachine, "k", 0, KeySetValue, open) == StatusSuccess);
    Writable("machine.db", false);
    CHECK(Open("k", KeySetValue) == StatusAccessDenied);
    CHECK(RegSetValueExA(open, "n", RegDword, "1234") == StatusAccessDenied);
    CHECK(RegDeleteKeyA(KeyLocalMachine, "k") == StatusAccessDenied);
    CHECK(Create("new") == StatusAccessDenied);
    CHECK(NamesFile(StatusAccessDenied, "machine.db"));
    CHECK(Create("k") == StatusSuccess);
    Shell("machine.db", "UPDATE value SET data = 2");
    CHECK(RawValue(KeyLocalMachine, "k", "n") == RawNumber(2));
}

TEST_CASE("A failed write to a registry file is reported with its path and changes nothing") {
    const TestMachine machine;
    CHECK(Create("k") == StatusSuccess);
    const pid_t process = Started([] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{300000, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
        Handle key = 0;
        RegOpenKeyExA(KeyLocalMachine, "k", 0, KeySetValue, key);
        const Status status = RegSetValueExA(key, "n", RegBinary, std::string(400000, 'x'));
        return status == StatusIoDevice && NamesFile(status, "machine.db") ? 0 : 1;
    });
    CHECK(ExitCode(process) == 0);
    CHECK(RawValueNames(KeyLocalMachine, "k").empty());
    CHECK(Create("further") == StatusSuccess);
}

TEST_CASE("An invalid registry file is reported with its path and left unchanged") {
    const TestMachine machine;
    const std::filesystem::path file = OnMachine("machine.db");
    DiskFile(file, std::string(511, 'x'));
    CHECK(Open("Software", KeyQueryValue) == Damaged);
    CHECK(Create("new") == Damaged);
    CHECK(DiskFile(file) == std::string(511, 'x'));
    std::filesystem::remove(file);
    CHECK(Shell("machine.db", "CREATE TABLE mine (n)").empty());
    CHECK(Create("new") == Damaged);
    CHECK(Shell("machine.db", ".tables") == "mine\n");
    const std::function<void()> others[] = {[&] { std::filesystem::create_directory(file); },
                                            [&] { CHECK(mkfifo(file.c_str(), 0600) == 0); },
                                            [] {
                                                RawValueSet(KeyClassesRoot, "Some.Class\\CLSID", "", RawText("x"));
                                                // Newer sqlite3 shells protect the schema by default.
                                                Shell("machine.db",
                                                      ".dbconfig defensive off\" \"PRAGMA writable_schema = 1;"
                                                      "UPDATE sqlite_master SET rootpage = 1 WHERE name = 'value';"
                                                      "PRAGMA schema_version = 99");
                                            }};
    for (const auto& make : others) {
        std::filesystem::remove(file);
        make();
        ObjectReference object = 0;
        CHECK(CreateObject(u"Some.Class", object) == Damaged);
        CHECK(NamesFile(Damaged, "machine.db"));
    }
}

TEST_CASE("Calls on locked registry files fail within three seconds in total") {
    const TestMachine machine;
    std::vector<SQLite::Database> others;
    for (const auto& [root, file] : {std::pair(KeyCurrentUser, "user.db"), {KeyLocalMachine, "machine.db"}}) {
        RawValueSet(root, "k", "n", RawNumber(1));
        others.emplace_back(OnMachine(file).native(), SQLite::OPEN_READWRITE);
        others.back().exec("BEGIN IMMEDIATE");
        CHECK(RawValue(root, "k", "n") == RawNumber(1));
        others.back().exec("INSERT INTO key VALUES (99, 2, 'x', 'x'); COMMIT; BEGIN EXCLUSIVE");
    }
    const auto start = std::chrono::steady_clock::now();
    Handle key = 0;
    for (int call = 0; call < 5; ++call) {
        CHECK(RegOpenKeyExA(KeyCurrentUser, "k", 0, KeySetValue, key) == Busy);
        CHECK(RegOpenKeyExA(KeyLocalMachine, "k", 0, KeySetValue, key) == Busy);
        CHECK(NamesFile(Busy, "machine.db"));
    }
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(3));
    others.clear();
    CHECK(RegOpenKeyExA(KeyCurrentUser, "k", 0, KeySetValue, key) == StatusSuccess);
}
