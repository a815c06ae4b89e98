#include <algorithm>
#include <optional>
#include <regex>
#include <vector>

#include "Check.h"
#include "ProductEntries.h"
#include "RawRegistry.h"
#include "faults/FaultMachine.h"
#include "platform/Regional.h"
#include "products/Installer.h"
#include "products/modShellExec.h"
#include "version/ProductProfileMain.h"
#include "version/modVTV4Version.h"

namespace {

// What may become of an operation.
struct Effect {
    std::vector<Seam> calls;  // when one of these failed
    Text told;                // one that ends in a line end is a head, behind which the fault is described
    std::string left;         // as a regular expression
};

struct Operation {
    std::string input;
    std::string success;          // what is left by it, also when a call failed that none of the effects names
    std::vector<Effect> effects;  // several of one call are alternatives
};

bool Fits(const Effect& effect, const Outcome& outcome, const Text& description) {
    const bool asTold = effect.told.ends_with(u'\n')
                            ? outcome.told.starts_with(effect.told) && outcome.told.ends_with(description)
                            : outcome.told == effect.told;
    return asTold && std::regex_match(outcome.left, std::regex(effect.left));
}

// Lets each call that the operation makes behind the program's start fail, one after the other; then the same
// operation has to succeed on what the fault left.
void FailedInTurn(const Operation& operation) {
    const std::string ended = "OK\nFertig\n";
    const std::string input = operation.input + ended;
    const Effect success{{}, {}, operation.success};
    FaultMachine machine;
    std::map<Seam, int> start;
    if (!operation.input.empty()) {
        machine.Session(ended);
        start = SeamCalls();
    }
    REQUIRE(Fits(success, machine.Session(input), {}));
    const std::map<Seam, int> all = SeamCalls();
    for (const Effect& effect : operation.effects) {
        CHECK(std::ranges::all_of(effect.calls, [&](Seam call) { return all.at(call) > start[call]; }));
    }
    for (const auto& counted : all) {
        const Seam call = counted.first;
        std::vector<Effect> right;
        std::ranges::copy_if(operation.effects, std::back_inserter(right),
                             [&](const Effect& effect) { return std::ranges::count(effect.calls, call) > 0; });
        if (right.empty()) {
            right = {success};
        }
        for (const auto& failure : FailuresOf(call)) {
            for (int occurrence = start[call] + 1; occurrence <= counted.second; ++occurrence) {
                INFO("call ", static_cast<std::size_t>(call), ", result ", failure.first, ", occurrence ", occurrence);
                machine.Reset();
                const Outcome outcome = machine.Session(input, {call, occurrence, failure.first});
                const bool isRight =
                    std::ranges::any_of(right, [&](const Effect& each) { return Fits(each, outcome, failure.second); });
                CHECK_MESSAGE(isRight, outcome.told, "\n", outcome.left);
                CHECK(Fits(success, machine.Session(input), {}));
            }
        }
    }
}

}  // namespace

TEST_CASE("A call that fails once in the start, an export, an import, a clearing or an editing has its told effect") {
    using enum Seam;
    const std::string main = R"(\(Standard\)=3;hugo=0;ruedi=1;\n)";
    const std::string reporting = R"(\(Standard\)=3;hugo=1;ruedi=99;\n)";
    const std::string file = R"(\[Tallora\];a=1;b=2;c=3;\[Reporting\];d=4;e=5;)";
    const std::string before = main + reporting + file;
    const std::string exported =
        main + reporting +
        R"(\[Tallora\];\(Standard\)=3;hugo=0;ruedi=1;;\[Reporting\];\(Standard\)=3;hugo=1;ruedi=99;;;\[End\];)";
    // The list of the table that could not be read ends before the entry that failed.
    const std::string cut = main + reporting +
                            R"(\[Tallora\];(\(Standard\)=3;(hugo=0;(ruedi=1;)?)?;)?)"
                            R"(\[Reporting\];(\(Standard\)=3;(hugo=1;(ruedi=99;)?)?;)?;\[End\];)";
    const std::string imported = R"(a=1;b=2;c=3;\nd=4;e=5;\n)" + file;
    // The second table is as before until the first one is complete.
    const std::string partly = R"(((a=1;(b=2;)?)?\n)" + reporting + R"(|a=1;b=2;c=3;\n(d=4;)?\n))" + file;
    const std::string cleared = R"(\n\n)" + file;
    const Text path = u"\r\nC:\\Users\\hugo\\Eigene Dateien\\vtv4v.txt\r\n";
    const Text noEditor = u"48 Kann Version File nicht öffnen:" + path;
    const Operation operations[] = {
        {"",
         before,
         // A product's folder that is not found fails the check, an entry that is not read is none.
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
         // An open that failed is tried again behind the creation of its key, or was one that may fail.
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
        FailedInTurn(operation);
    }
}

TEST_CASE("A full disk leaves the earlier file, a refused deletion is silent, and a failed load names its product") {
    FaultMachine machine;
    const std::string before = machine.Left();
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    SeamStart({Seam::CreateFileA, 1, platform::StatusDiskFull});
    CHECK(RaisedBy(WriteDemoFile).number == 61);
    SeamStart({Seam::RegDeleteValueA, 1, 5});
    CHECK(RaisedBy([] { ProductProfileMain().Profile.Table->ForcedVersion(true, u"hugo", -1); }).number == 0);
    SeamStop();
    CHECK(machine.Left() == before);
    CHECK(machine.Session("OK\n", {Seam::RegSetValueExA, 1, 5})
              .told.starts_with(u"48 Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4\r\n"));
    const auto storeHugo = [](const RawData& data) {
        RawValueSet(platform::KeyLocalMachine, "Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion",
                    "hugo", data);
    };
    storeHugo(RawText("3000000000"));
    // Status 6 isn't run-time error 6, so the system's text for it must not appear.
    CHECK(machine.Session("OK\n", {Seam::StatusText, 1, 0}, {Seam::MessageBoxW, 1, [&] { storeHugo(RawNumber(1)); }})
              .told ==
          u"48 Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4\\Reporting\r\n"
          u"Überlauf (Fehler 6)");
    CHECK(machine.Session("Demo\nFertig\n").left.ends_with(";[End];"));
}

TEST_CASE("A click or a close in the middle of an import leaves it whole, and nothing else runs") {
    // A question that a second click would ask is answered with yes.
    const std::string input = "Importieren\nJa\nJa\nOK\nOK\nFertig\n";
    FaultMachine machine;
    machine.Session("Fertig\n");
    const int start = SeamCalls()[Seam::DoEvents];
    CHECK(start == 12);  // behind each product's five look-ups and its note
    const Outcome whole = machine.Session(input);
    REQUIRE(SeamCalls()[Seam::DoEvents] == start + 5);
    for (std::size_t button = 0; button < 7; ++button) {
        const auto act = [&] { button < 6 ? SeamEvents().clicked(button) : platform::WindowDestroy(SeamWindow()); };
        machine.Reset();
        CHECK(machine.Session(input, {}, {Seam::DoEvents, start + 3, act}) == whole);
    }
}

TEST_CASE("The editor and the installer are started as told, and the installer is waited for") {
    CHECK(ShellErrorText(33).empty());
    FaultMachine machine;
    machine.Session("Bearbeiten\nFertig\n");
    CHECK(SeamRecord().find("ShellExecuteA|65552|open|\"C:\\Users\\hugo\\Eigene Dateien\\vtv4v.txt\"||"
                            "C:\\Users\\hugo\\Eigene Dateien\\|1\n") != std::string::npos);
    struct {
        SeamFault fault;
        std::optional<std::uint32_t> timeOut;
        std::int32_t error;
        std::string waited;
    } const waits[] = {{{}, {}, 0, "WaitForSingleObject|it|4294967295\n"},
                       {{}, 0, 0, "WaitForSingleObject|it|0\n"},
                       {{Seam::OpenProcess, 1, 0}, {}, 0, "WaitForSingleObject|0|4294967295\n"},
                       {{Seam::StartCommandLine, 1, 2}, {}, 53, ""},
                       {{Seam::StartCommandLine, 1, 5}, {}, 5, ""}};
    for (const auto& each : waits) {
        AllClosedBehind([&] {
            SeamStart(each.fault);
            CHECK(RaisedBy([&] { ShellAndWait(u"true", each.timeOut); }).number == each.error);
            SeamStop();
        });
        CHECK(SeamRecord() == "StartCommandLine|true|2|0\n" + each.waited);
    }
    ProductEntries products;
    Installer installer;
    for (const bool quiet : {false, true}) {
        products.Add("VT", "Vandrel Test", "x {T-1}");
        installer.GUI(u"T-1");
        SeamStart({Seam::StartCommandLine, 1, 0}, {Seam::WaitForSingleObject, 1, [&] { products.Clear(); }});
        installer.UnInstall(quiet);
        installer.UnInstall();
        SeamStop();
        CHECK(SeamRecord().starts_with(quiet ? "StartCommandLine|MsiExec.exe /quiet /x{T-1}|2|0\nWait"
                                             : "StartCommandLine|MsiExec.exe /x{T-1}|2|0\nWait"));
        CHECK_FALSE(installer.IsInstalled());
    }
}
