#include <SQLiteCpp/Database.h>

#include <cstdlib>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"

namespace {

// Runs vtv4v-reg in a shell and returns its exit code. `redirection` follows the arguments.
int Run(const std::string& arguments, const std::string& redirection) {
    const std::string command = "'" VTV4V_PROGRAM "-reg' " + arguments + " " + redirection;
    return WEXITSTATUS(std::system(command.c_str()));
}

}  // namespace

TEST_CASE("vtv4v-reg handles control characters, duplicates, closed pipes and denied access") {
    const TestMachine machine;
    const std::string file = OnDisk(machine.ControlFile()).string();
    const std::string output = OnMachine("output").string();
    DiskFile(file, "[Tallora]\nx\x1B[2J\x9B\x7F\na=1\nA=2\n[Reporting]\n");
    const std::string earlier = OnMachine("earlier").string();
    DiskFile(earlier, "[Tallora]\na =1\n[Reporting]\n");
    CHECK(Run("'" + file + "' '" + file + ".xml' '" + earlier + "'", ">'" + output + "'") == 1);
    CHECK(*DiskFile(output) ==
          "Zeile 2: »x\\x1B[2J›\\x7F« wird übersprungen: kein »=«\n"
          "Warnung: Zeile 4: »A« steht schon in Zeile 3; die letzte Zahl gilt.\n" +
              earlier +
              ": Warnung: Zeile 2: Die Leerzeichen am Anfang oder Ende gehören zum Namen »a «.\n"
              "Einträge: Tallora 1, Reporting 0. Übersprungen: 1. Warnungen: 2. Zu löschen: Tallora 1, Reporting 0.\n");
    CHECK(Run("'" + file + "' '" + file + ".reg'", "| true") == 0);
    CHECK(DiskFile(file + ".reg"));
    RawValueSet(platform::KeyLocalMachine, "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion", "a", RawNumber(1));
    Writable("machine.db", false);
    CHECK(Run("/import '" + file + "'", "2>'" + output + "'") == 2);
    Writable("machine.db", true);
    CHECK(*DiskFile(output) ==
          "HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4: Schreiben ist nicht möglich; dazu sind "
          "Administratorrechte nötig.\n");
    CHECK(RawValue(platform::KeyLocalMachine, "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion", "a"));
}

TEST_CASE("vtv4v-reg explains registry errors in German") {
    const TestMachine machine;
    const std::string file = OnDisk(machine.ControlFile()).string();
    const std::string output = OnMachine("output").string();
    DiskFile(file, "[Tallora]\na=1\n[Reporting]\n");
    const std::string key = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";
    const std::string database = OnMachine("machine.db").string();
    RawValueSet(platform::KeyCurrentUser, key, "", RawText("2147483648"));
    CHECK(Run("/wer hugo", "2>'" + output + "'") == 2);
    CHECK(*DiskFile(output) == "»Benutzer: (Standard)« der Tabelle [Tallora]: Überlauf.\n");
    RawValueSet(platform::KeyLocalMachine, key, "a", RawText("2147483648"));
    RawValueSet(platform::KeyLocalMachine, key, "b", RawNumber(1));
    CHECK(Run("/export '" + file + ".out'", ">'" + output + "'") == 1);
    CHECK(*DiskFile(output) == "Warnung: Die Datei kann nicht importiert werden: " + file +
                                   ".out: Zeile 16: Überlauf.\n"
                                   "Warnung: Der Eintrag »a« der Tabelle [Tallora] ist nicht lesbar oder keine "
                                   "gültige Zahl.\n"
                                   "Einträge: Tallora 1, Reporting 0. Übersprungen: 0. Warnungen: 2.\n");
    SQLite::Database(database, SQLite::OPEN_READWRITE)
        .exec("CREATE TRIGGER refusal BEFORE INSERT ON value WHEN new.name = 'a' BEGIN SELECT RAISE(ABORT, ''); END");
    CHECK(Run("/import '" + file + "'", "2>'" + output + "'") == 2);
    CHECK(*DiskFile(output) == file + ": Die Registrierungsdatei \"" + database +
                                   "\" kann nicht gelesen oder geschrieben werden. (Fehler 1117). Der Import wurde "
                                   "abgebrochen; die Tabellen sind unvollständig.\n");
    DiskFile(database, "damaged");
    CHECK(Run("/import '" + file + "'", "2>'" + output + "'") == 2);
    CHECK(
        *DiskFile(output) ==
        "HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4: Schreiben ist nicht möglich: Die Registrierungsdatei \"" +
            database + "\" ist beschädigt oder keine Registrierung. (Fehler 1009)\n");
}
