#include <SQLiteCpp/Database.h>

#include <chrono>
#include <cstdlib>
#include <random>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "samples/InstalledSuite.h"

namespace {

const std::string Master = "'" VTV4V_PROGRAM "' -master";
const std::string Reg = "'" VTV4V_PROGRAM "-reg' ";
const std::string Key = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";

// Runs a shell command with `input` as standard input and returns its exit code. Writes its output to the file "shown".
int Run(const std::string& command, const std::string& input = {}) {
    DiskFile(OnMachine("typed"), input);
    const std::string files = " <'" + OnMachine("typed").native() + "' >'" + OnMachine("shown").native() + "' 2>&1";
    return WEXITSTATUS(std::system((command + files).c_str()));
}

}  // namespace

TEST_CASE("With any command line except -master, the program exits without output") {
    const TestMachine machine;
    for (const char* const arguments : {"", "-MASTER", "-master x", "'\"-master\"'"}) {
        CHECK(Run("'" VTV4V_PROGRAM "' " + std::string(arguments)) == 0);
        CHECK(DiskFile(OnMachine("shown")) == "");
    }
    CHECK_FALSE(std::filesystem::exists(OnMachine("user.db")));
    CHECK(Run("'" VTV4V_PROGRAM "' ' -master '") == 0);
    CHECK(DiskFile(OnMachine("shown")) != "");
}

TEST_CASE("An import killed at any time leaves every entry either complete or missing") {
    const std::string input = "Importieren\nJa\nOK\nFertig\n";
    const TestMachine machine;
    InstalledSuiteAdd({});
    constexpr unsigned items = 400;
    std::string file = "[Tallora]\r\n";
    for (unsigned item = 0; item < items; ++item) {
        file += "user" + std::to_string(item) + "=" + std::to_string(item % 6) + "\r\n";
    }
    FileContent(machine.ControlFile(), file);
    std::mt19937 random(4863);  // NOLINT: the fixed seed makes the delays reproducible
    const auto start = std::chrono::steady_clock::now();
    Run(Master, input);
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - start;
    std::uniform_real_distribution<double> delay(1e-6, duration.count());
    int interrupted = 0;
    for (int round = 0; round < 200; ++round) {
        Run("exec timeout --foreground -s KILL " + std::to_string(delay(random)) + " " + Master, input);
        const auto names = RawValueNames(platform::KeyLocalMachine, Key);
        interrupted += !names.empty() && names.size() < items ? 1 : 0;
        for (const std::string& name : names) {
            const unsigned number = static_cast<unsigned>(std::stoul(name.substr(4)));
            REQUIRE(RawValue(platform::KeyLocalMachine, Key, name) == RawNumber(number % 6));
        }
    }
    CHECK(interrupted > 0);
    CHECK(Run(Master, input) == 0);
    CHECK(RawValueNames(platform::KeyLocalMachine, Key).size() == items);
}

TEST_CASE("vtv4v-reg handles control characters, closed pipes and registry errors") {
    const TestMachine machine;
    const std::string path = OnDisk(machine.ControlFile()).string();
    const std::string file = "'" + path + "'";
    const std::string database = OnMachine("machine.db").string();
    const auto shows = [](const std::string& text) { CHECK(DiskFile(OnMachine("shown")).value_or("") == text); };
    DiskFile(path, "[Tallora]\nx\x1B[2J\x9B\x7F\na=1\nA=2\n[Reporting]\n");
    CHECK(Run(Reg + file) == 1);
    shows(
        "Zeile 2: »x\\x1B[2J›\\x7F« wird übersprungen: kein »=«\n"
        "Warnung: Zeile 4: »A« steht schon in Zeile 3; die letzte Zahl gilt.\n"
        "Einträge: Tallora 1, Reporting 0. Übersprungen: 1. Warnungen: 1.\n");
    CHECK(Run(Reg + file + " '" + path + ".reg' | true") == 0);
    CHECK(DiskFile(path + ".reg"));
    DiskFile(path, "[Tallora]\na=1\n[Reporting]\n");
    RawValueSet(platform::KeyLocalMachine, Key, "a", RawNumber(1));
    Writable("machine.db", false);
    CHECK(Run(Reg + "/import " + file) == 2);
    Writable("machine.db", true);
    shows(
        "HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4: Schreiben ist nicht möglich; dazu sind "
        "Administratorrechte nötig.\n");
    CHECK(RawValue(platform::KeyLocalMachine, Key, "a"));
    RawValueSet(platform::KeyCurrentUser, Key, "", RawText("2147483648"));
    CHECK(Run(Reg + "/wer hugo") == 2);
    shows("HKEY_CURRENT_USER: Überlauf.\n");
    SQLite::Database(database, SQLite::OPEN_READWRITE)
        .exec("CREATE TRIGGER refusal BEFORE INSERT ON value WHEN new.name = 'a' BEGIN SELECT RAISE(ABORT, ''); END");
    CHECK(Run(Reg + "/import " + file) == 2);
    CHECK(DiskFile(OnMachine("shown"))
              ->ends_with(path + ": Die Registrierungsdatei \"" + database +
                          "\" kann nicht gelesen oder geschrieben werden. (Fehler 1117). Der Import wurde abgebrochen; "
                          "die Tabellen sind "
                          "unvollständig.\n"));
    DiskFile(database, "damaged");
    CHECK(Run(Reg + "/wer hugo") == 2);
    CHECK(DiskFile(OnMachine("shown"))
              ->starts_with("HKEY_LOCAL_MACHINE\\" + Key + ": Die Registrierungsdatei \"" + database));
}
