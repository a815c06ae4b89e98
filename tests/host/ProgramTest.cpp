#include <SQLiteCpp/Database.h>

#include <cstdlib>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "samples/InstalledSuite.h"

namespace {

const std::string Key = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";

// Runs vtv4v, or vtv4v-reg if `arguments` begins with "-reg", in the machine's folder, with `input` as standard input.
// Returns "CODE OUTPUT|ERRORS": the exit code, standard output and standard error.
std::string Run(const std::string& arguments, const std::string& input = {}) {
    DiskFile(OnMachine("typed"), input);
    const std::string folder = "cd '" + OnMachine("").native() + "' && ";
    const int status = std::system((folder + "'" VTV4V_PROGRAM "'" + arguments + " <typed >shown 2>errors").c_str());
    return std::to_string(WEXITSTATUS(status)) + " " + *DiskFile(OnMachine("shown")) + "|" +
           *DiskFile(OnMachine("errors"));
}

}  // namespace

TEST_CASE("The program reads from a pipe, and exits at once unless started with -master") {
    const TestMachine machine;
    InstalledSuiteAdd({});
    CHECK(Run(" -MASTER", "Demo\n") == "0 |");
    CHECK(Run(" -mas ter", "Demo\n") == "0 |");
    const std::string choices =
        "  1 Exportieren\n  2 Importieren\n  3 Demo\n  4 Löschen\n  5 Bearbeiten\n  6 Fertig\n  ? Erklärungen\n"
        "  x Schließen\n";
    const std::string question =
        "== Vandrel Tallora V4 Version Controller ==\nFrage\nAlle Versions-Einstellungen werden gelöscht.\n"
        "Weiterfahren?\n  1 Ja\n  2 Nein\n  3 Abbrechen\n  x Schließen\n";
    CHECK(Run(" ' -master '", "qu\x1Btsch\n  LÖSCHEN \r\n3\nlo\u0308schen\nx\nDemo\n2\nja\nOK\n?\nX\n")
              .starts_with("0 == VTV4 Version Controller ==\n" + choices +
                           "> qu tsch\nDas gibt es hier nicht. Eingeben lässt sich:\n" + choices + ">   LÖSCHEN \n" +
                           question + "> 3\n> lo\u0308schen\n" + question + "> x\n> Demo\n> 2\n"));
    CHECK(RawValue(platform::KeyLocalMachine, Key, "ruedi") == RawNumber(1));
}

TEST_CASE("vtv4v-reg escapes control characters, survives closed pipes and reports errors") {
    const TestMachine machine;
    CHECK(Run("-reg new '/?'").starts_with("0 Prüft, exportiert, importiert"));
    DiskFile(OnMachine("new"), "[Tallora]\nx\x1B[2J\x9B\x7F\xA0.\na=1\nA=2\n[Reporting]\n");
    DiskFile(OnMachine("old"), "[Tallora]\na =1\n[Reporting]\n");
    CHECK(std::system(("touch -d '2017-12-16 10:16:40' '" + OnMachine("new").native() + "'").c_str()) == 0);
    CHECK(Run("-reg new new.xml old") ==
          "1 Zeile 2: »x\\x1B[2J›\\x7F\u00A0.« wird übersprungen: kein »=«\n"
          "Warnung: Zeile 4: »A« steht schon in Zeile 3; die letzte Zahl gilt.\n"
          "old: Warnung: Zeile 2: Die Leerzeichen am Anfang oder Ende gehören zum Namen »a «.\n"
          "Einträge: Tallora 1, Reporting 0. Übersprungen: 1. Warnungen: 2. Zu löschen: Tallora 1, Reporting 0.\n|");
    CHECK(DiskFile(OnMachine("new.xml"))->find(" changed=\"2017-12-16 10:16:40\"") != std::string::npos);
    CHECK(Run("-reg new new.reg | true") == "0 |");
    CHECK(DiskFile(OnMachine("new.reg")));

    CHECK(Run("-reg /wer a b c").starts_with("2 |/wer verlangt einen Benutzer und höchstens eine Steuerungs-Datei."));
    RawValueSet(platform::KeyCurrentUser, Key, "", RawText("2147483648"));
    CHECK(Run("-reg /wer hugo") == "2 |»Benutzer: (Standard)« der Tabelle [Tallora]: Überlauf.\n");
    RawValueSet(platform::KeyLocalMachine, Key, "a", RawText("2147483648"));
    RawValueSet(platform::KeyLocalMachine, Key, "b", RawNumber(1));
    CHECK(Run("-reg /export new") ==
          "1 Warnung: Die Datei kann nicht importiert werden: new: Zeile 16: Überlauf.\n"
          "Warnung: Der Eintrag »a« der Tabelle [Tallora] ist nicht lesbar oder keine gültige Zahl.\n"
          "Einträge: Tallora 1, Reporting 0. Übersprungen: 0. Warnungen: 2.\n|");

    DiskFile(OnMachine("new"), "[Tallora]\na=1\n[Reporting]\n");
    CHECK(Run("-reg new none/new.reg") == "2 |none/new.reg: Pfad nicht gefunden.\n");
    Writable("machine.db", false);
    CHECK(Run("-reg /import new") ==
          "2 |HKEY_LOCAL_MACHINE\\Software\\Vandrel\\Tallora\\V4: Schreiben ist nicht möglich; dazu sind "
          "Administratorrechte nötig.\n");
    Writable("machine.db", true);
    CHECK(RawValue(platform::KeyLocalMachine, Key, "b"));
    const std::string database = OnMachine("machine.db").string();
    SQLite::Database(database, SQLite::OPEN_READWRITE)
        .exec("CREATE TRIGGER refusal BEFORE INSERT ON value WHEN new.name = 'a' BEGIN SELECT RAISE(ABORT, ''); END");
    CHECK(Run("-reg /import new") == "2 |new: Die Registrierungsdatei \"" + database +
                                         "\" kann nicht gelesen oder geschrieben werden. (Fehler 1117). Der Import "
                                         "wurde abgebrochen; die Tabellen sind unvollständig.\n");
    DiskFile(database, "x");
    CHECK(Run("-reg /export new")
              .starts_with("2 |HKEY_LOCAL_MACHINE\\" + Key + ": Die Registrierungsdatei \"" + database));
    CHECK(DiskFile(OnMachine("new")) == "[Tallora]\na=1\n[Reporting]\n");
}
