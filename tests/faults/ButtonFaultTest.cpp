#include <algorithm>
#include <regex>
#include <vector>

#include "Check.h"
#include "RawRegistry.h"
#include "faults/FaultMachine.h"
#include "platform/Regional.h"
#include "products/modShellExec.h"
#include "version/ProductProfileMain.h"
#include "version/modVTV4Version.h"

namespace {

// An expected outcome if one of `calls` fails.
struct Effect {
    std::vector<Seam> calls;
    Text message;       // if it ends with a newline, the fault's description must follow
    std::string state;  // a regular expression for the expected state
};

struct Operation {
    std::string input;
    std::string success;          // the expected state, also after the failure of a call with no listed effect
    std::vector<Effect> effects;  // effects of the same call are alternatives
};

bool Matches(const Effect& effect, const Outcome& outcome, const Text& description) {
    const bool hasMessage = effect.message.ends_with(u'\n') ? outcome.messages.starts_with(effect.message) &&
                                                                  outcome.messages.ends_with(description)
                                                            : outcome.messages == effect.message;
    return hasMessage && std::regex_match(outcome.state, std::regex(effect.state));
}

// Runs the operation once for every call it makes after startup, making that call fail. After each fault, the same
// operation must succeed.
void FailEachCallInTurn(const Operation& operation) {
    const std::string close = "OK\nFertig\n";
    const std::string input = operation.input + close;
    const Effect success{{}, {}, operation.success};
    FaultMachine machine;
    std::map<Seam, int> start;
    if (!operation.input.empty()) {
        machine.Session(close);
        start = SeamCalls();
    }
    REQUIRE(Matches(success, machine.Session(input), {}));
    const std::map<Seam, int> all = SeamCalls();
    for (const Effect& effect : operation.effects) {
        CHECK(std::ranges::all_of(effect.calls, [&](Seam call) { return all.at(call) > start[call]; }));
    }
    for (const auto& counted : all) {
        const Seam call = counted.first;
        std::vector<Effect> expected;
        for (const Effect& effect : operation.effects) {
            if (std::ranges::count(effect.calls, call) > 0) {
                expected.push_back(effect);
            }
        }
        if (expected.empty()) {
            expected = {success};
        }
        for (const auto& failure : FailuresOf(call)) {
            for (int occurrence = start[call] + 1; occurrence <= counted.second; ++occurrence) {
                INFO("call ", static_cast<std::size_t>(call), ", result ", failure.first, ", occurrence ", occurrence);
                machine.Reset();
                const Outcome outcome = machine.Session(input, {call, occurrence, failure.first});
                const auto matches = [&](const Effect& each) { return Matches(each, outcome, failure.second); };
                CHECK_MESSAGE(std::ranges::any_of(expected, matches), outcome.messages, "\n", outcome.state);
                CHECK(Matches(success, machine.Session(input), {}));
            }
        }
    }
}

}  // namespace

TEST_CASE("A failed call in any operation has the expected effect, and a retry succeeds") {
    using enum Seam;
    const std::string main = R"(\(Standard\)=3;hugo=0;ruedi=1;\n)";
    const std::string reporting = R"(\(Standard\)=3;hugo=1;ruedi=99;\n)";
    const std::string file = R"(\[Tallora\];a=1;b=2;c=3;\[Reporting\];d=4;e=5;)";
    const std::string before = main + reporting + file;
    const std::string exported =
        main + reporting +
        R"(\[Tallora\];\(Standard\)=3;hugo=0;ruedi=1;;\[Reporting\];\(Standard\)=3;hugo=1;ruedi=99;;;\[End\];)";
    // After a failed read, the export contains the entries before the unreadable one.
    const std::string cut = main + reporting +
                            R"(\[Tallora\];(\(Standard\)=3;(hugo=0;(ruedi=1;)?)?;)?)"
                            R"(\[Reporting\];(\(Standard\)=3;(hugo=1;(ruedi=99;)?)?;)?;\[End\];)";
    const std::string imported = R"(a=1;b=2;c=3;\nd=4;e=5;\n)" + file;
    // The second table remains unchanged until the first one is complete.
    const std::string partly = R"(((a=1;(b=2;)?)?\n)" + reporting + R"(|a=1;b=2;c=3;\n(d=4;)?\n))" + file;
    const std::string cleared = R"(\n\n)" + file;
    const Text path = u"\r\nC:\\Users\\hugo\\Eigene Dateien\\vtv4v.txt\r\n";
    const Text noEditor = u"48 Kann Version File nicht öffnen:" + path;
    const Operation operations[] = {
        {"",
         before,
         // If a product's folder can't be found, the check fails. An unreadable forced version is ignored.
         {{{RegOpenKeyExA, RegQueryValueExA, RegEnumKeyExA}, u"", before},
          {{RegOpenKeyExA, RegQueryValueExA, RegEnumKeyExA, FindNormalFile, CreateObject},
           u"check failed, report copied",
           before},
          {{RegOpenKeyExA, RegCreateKeyExA, RegSetValueExA},
           u"48 Kann Versions-Einstellungen nicht laden:\r\n",
           before},
          {{WindowCreate}, u"48 Kann Programm nicht ausführen:\r\n", before}}},
        {"Exportieren\n",
         exported,
         {{{RegOpenKeyExA, RegEnumValueA, RegQueryValueExA}, u"", cut},
          // A control file that can't be replaced is written in place.
          {{CreateFileA, CopyPermissions, MoveFileExA}, u"", exported},
          {{CreateFileA, WriteFile, FlushFileBuffers}, u"48 Kann Steuerungs-Datei nicht schreiben:" + path, before},
          {{ShellExecuteA}, noEditor, exported}}},
        {"Importieren\nJa\n",
         imported,
         // Not every failed open matters: some keys are then created, and some may be missing.
         {{{CreateFileA, ReadFile}, u"16 Fehlgeschlagen!", before},
          {{RegOpenKeyExA}, u"", imported},
          {{RegOpenKeyExA, RegCreateKeyExA, RegSetValueExA}, u"16 Fehlgeschlagen!", partly},
          {{MessageBoxW}, u"", before + "|" + imported}}},
        {"Löschen\nJa\n",
         cleared,
         {{{RegOpenKeyExA, RegDeleteKeyA}, u"", "(" + main + R"(\n|\n)" + reporting + ")" + file},
          {{MessageBoxW}, u"", before + "|" + cleared}}},
        {"Bearbeiten\n", before, {{{ShellExecuteA}, noEditor, before}}}};
    for (const Operation& operation : operations) {
        INFO(operation.input);
        FailEachCallInTurn(operation);
    }
}

TEST_CASE("A full disk, a denied deletion and a failed load have the expected effects") {
    FaultMachine machine;
    const std::string before = machine.State();
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    SeamStart({Seam::CreateFileA, 1, platform::StatusDiskFull});
    CHECK(RaisedBy(WriteDemoFile).number == 61);
    SeamStart({Seam::RegDeleteValueA, 1, 5});
    CHECK(RaisedBy([] { ProductProfileMain().Profile.Table->ForcedVersion(true, u"hugo", -1); }).number == 0);
    SeamStop();
    CHECK(machine.State() == before);
    CHECK(machine.Session("OK\n", {Seam::RegSetValueExA, 1, 5})
              .messages.starts_with(
                  u"48 Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4\r\n"));
    const auto storeHugo = [](const RawData& data) {
        RawValueSet(platform::KeyLocalMachine, "Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion",
                    "hugo", data);
    };
    storeHugo(RawText("3000000000"));
    // Status 6 isn't run-time error 6, so the system's message for status 6 must not appear.
    CHECK(machine.Session("OK\n", {Seam::StatusText, 1, 0}, {Seam::MessageBoxW, 1, [&] { storeHugo(RawNumber(1)); }})
              .messages ==
          u"48 Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4\\Reporting\r\n"
          u"Überlauf (Fehler 6)");
    CHECK(machine.Session("Demo\nBearbeiten\nFertig\n").state.ends_with(";[End];"));
    CHECK(SeamStarted() ==
          "65552|open|\"C:\\Users\\hugo\\Eigene Dateien\\vtv4v.txt\"||C:\\Users\\hugo\\Eigene Dateien\\|1");
    SeamStart({});
    ShellAndWait(u"true");
    SeamStop();
    CHECK(SeamStarted() == "true|2");
}

TEST_CASE("Clicking or closing during an import neither interrupts it nor starts another") {
    // If a second click brought up the confirmation prompt, this input would answer Yes.
    const std::string input = "Importieren\nJa\nJa\nOK\nOK\nFertig\n";
    FaultMachine machine;
    machine.Session("Fertig\n");
    const int start = SeamCalls()[Seam::DoEvents];
    CHECK(start == 12);  // five lookups and one recorded user name per product
    const Outcome undisturbed = machine.Session(input);
    REQUIRE(SeamCalls()[Seam::DoEvents] == start + 5);
    for (std::size_t button = 0; button < 7; ++button) {
        const auto act = [&] { button < 6 ? SeamEvents().clicked(button) : platform::WindowDestroy(SeamWindow()); };
        machine.Reset();
        CHECK(machine.Session(input, {}, {Seam::DoEvents, start + 3, act}) == undisturbed);
    }
}
