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

TEST_CASE("vtv4v-reg handles control characters, a closed pipe and missing rights") {
    const TestMachine machine;
    const std::string file = OnDisk(machine.ControlFile()).string();
    const std::string output = OnMachine("output").string();
    DiskFile(file, "[Tallora]\nx\x1B[2J\x9B\x7F\n[Reporting]\n");
    CHECK(Run("'" + file + "'", ">'" + output + "'") == 1);
    CHECK(DiskFile(output)->starts_with("Zeile 2: »x\\x1B[2J›\\x7F« wird übersprungen: kein »=«\n"));
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
