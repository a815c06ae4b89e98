#include <algorithm>
#include <regex>
#include <set>
#include <tuple>
#include <vector>

#include "Check.h"
#include "RawRegistry.h"
#include "app/Main.h"
#include "faults/FaultySeam.h"
#include "host/MachineFiles.h"
#include "installcheck/VcoreTest.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Unicode.h"
#include "products/modShellExec.h"
#include "samples/InstalledSuite.h"
#include "version/ProductProfileMain.h"
#include "version/ProductProfileReporting.h"
#include "version/modVTV4Version.h"

namespace {

// The result of a program run: its messages (see SeamRecord), followed by "check failed" and ", report copied" if the
// program reported these; and the machine's state (see FaultMachine::State).
struct Outcome {
    Text messages;
    std::string state;
};

// A machine with the complete suite, entries in both tables, a control file with other entries, and an editor that
// exits immediately.
struct FaultMachine : TestMachine {
    // Omits the components in `without` (see InstalledSuiteAdd).
    explicit FaultMachine(const std::set<std::string>& without = {}) {
        char option[] = "-master";
        char* arguments[] = {option, option};
        platform::ProcessStart(2, arguments);
        InstalledSuiteAdd(without);
        RawValueSet(platform::KeyClassesRoot, ".txt", "", RawText("text"));
        RawValueSet(platform::KeyClassesRoot, "text\\shell\\open\\command", "", RawText("true %1"));
        Reset();
    }

    // Restores the initial tables and control file. Creating the profiles also records the user's name, so that every
    // later start finds it.
    void Reset() {
        ProductProfileMain().Profile.Table->ForcedVersionAll(true, u"(Standard)=3;hugo=0;ruedi=1;");
        ProductProfileReporting().Profile.Table->ForcedVersionAll(true, u"(Standard)=3;hugo=1;ruedi=99;");
        FileContent(ControlFile(), "[Tallora]\r\na=1\r\nb=2\r\nc=3\r\n[Reporting]\r\nd=4\r\ne=5\r\n");
    }

    // Returns both tables as item strings, one per line, then the control file with its line endings replaced by ";".
    // An exported control file is reduced to its tables.
    [[nodiscard]] std::string State() const {
        std::string file = std::regex_replace(FileContent(ControlFile()).value_or("no file"), std::regex("\r\n"), ";");
        if (file.starts_with("[Info]") && file.ends_with(";[End];")) {
            file.erase(0, std::min(file.find("[Tallora]"), file.size()));
        }
        return platform::AnsiFromText(ProductProfileMain().Profile.Table->ForcedVersionAll(true) + u"\n" +
                                      ProductProfileReporting().Profile.Table->ForcedVersionAll(true)) +
               "\n" + file;
    }

    // Runs the program with `input` until it exits. Checks that no handle leaks, no error stays pending, and the
    // control file's folder contains no other file.
    [[nodiscard]] Outcome Session(const std::string& input, const SeamFault& fault = {}) const {
        // Handles are numbered consecutively.
        const platform::Handle first = platform::host::HandleAdd(platform::host::ProcessReference{});
        SeamStart(fault);
        const std::string output = OutputOf(input, Main);
        const Text messages = SeamStop().messages;
        const bool failed = output.find("Vandrel Core Elements V1") != std::string::npos;
        const bool copied = output.find("Zwisachenablage") != std::string::npos;
        const platform::Handle last = platform::host::HandleAdd(platform::host::ProcessReference{});
        for (platform::Handle handle = first + 1; handle < last; ++handle) {
            CHECK(platform::host::HandleFind(handle) == nullptr);
        }
        platform::host::HandleRemove(first);
        platform::host::HandleRemove(last);
        CHECK((MainVersions == nullptr && ReportingVersions == nullptr));
        CHECK((LastError().Number() == 0 && LastError().Description().empty()));
        const std::filesystem::directory_iterator files(OnDisk(ControlFile()).parent_path());
        CHECK(std::distance(files, {}) == 1);
        return {messages + (failed ? u"check failed" : u"") + (copied ? u", report copied" : u""), State()};
    }
};

// An expected outcome if one of `calls` fails.
struct Effect {
    std::set<Seam> calls;
    Text message;       // if it ends with a newline, the fault's description must follow
    std::string state;  // a regular expression for the expected state
};

struct Operation {
    std::string input;
    std::string success;          // the expected state, also after the failure of a call with no listed effect
    std::vector<Effect> effects;  // effects of the same call are alternatives; each of them must occur
};

bool Matches(const Effect& effect, const Outcome& outcome, const Text& description = {}) {
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
        CHECK(machine.Session(close).messages.empty());
        start = SeamStop().calls;
    }
    REQUIRE(Matches(success, machine.Session(input)));
    const std::map<Seam, int> all = SeamStop().calls;
    std::set<std::pair<const Effect*, Seam>> occurred;
    for (const auto& counted : all) {
        const Seam call = counted.first;
        std::vector<const Effect*> expected;
        for (const Effect& effect : operation.effects) {
            if (effect.calls.contains(call)) {
                expected.push_back(&effect);
            }
        }
        if (expected.empty()) {
            expected = {&success};
        }
        for (const auto& failure : FailuresOf(call)) {
            for (int occurrence = start[call] + 1; occurrence <= counted.second; ++occurrence) {
                INFO("call ", static_cast<std::size_t>(call), ", result ", failure.first, ", occurrence ", occurrence);
                machine.Reset();
                const Outcome outcome = machine.Session(input, {call, occurrence, failure.first});
                const auto found = std::ranges::find_if(
                    expected, [&](const Effect* each) { return Matches(*each, outcome, failure.second); });
                CHECK_MESSAGE(found != expected.end(), outcome.messages, "\n", outcome.state);
                occurred.emplace(found == expected.end() ? nullptr : *found, call);
                CHECK(Matches(success, machine.Session(input)));
            }
        }
    }
    for (const Effect& effect : operation.effects) {
        for (const Seam call : effect.calls) {
            CHECK_MESSAGE(occurred.contains({&effect, call}), static_cast<std::size_t>(call), effect.message);
        }
    }
}

// Returns the report of a check during which one call fails.
Text ReportUnder(const SeamFault& fault) {
    VcoreTest check;
    SeamStart(fault);
    const bool passed = check.Ok(false);
    SeamStop();
    Text report = check.Text();
    CHECK(passed == (report.ends_with(u"[Status]\r\nOK\r\n") && report.find(u"***") == Text::npos));
    return report;
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
    const Text notLoaded = u"48 Kann Versions-Einstellungen nicht laden:\r\nSoftware\\Vandrel\\Tallora\\V4";
    const Operation operations[] = {
        {"",
         before,
         // If a product's folder can't be found, the check fails. An unreadable forced version is ignored.
         {{{RegOpenKeyExA, RegQueryValueExA}, u"", before},
          {{RegOpenKeyExA, RegQueryValueExA, RegEnumKeyExA, FindNormalFile, CreateObject},
           u"check failed, report copied",
           before},
          {{RegOpenKeyExA, RegCreateKeyExA, RegSetValueExA}, notLoaded + u"\r\n", before},
          {{RegOpenKeyExA, RegCreateKeyExA, RegSetValueExA}, notLoaded + u"\\Reporting\r\n", before},
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
         // Some failed opens do no harm, because the program then creates the key or doesn't need it.
         {{{CreateFileA, ReadFile}, u"16 Fehlgeschlagen!", before},
          {{RegOpenKeyExA}, u"", imported},
          {{RegOpenKeyExA, RegCreateKeyExA, RegSetValueExA}, u"16 Fehlgeschlagen!", partly},
          {{MessageBoxW}, u"", before},
          {{MessageBoxW}, u"", imported}}},
        {"Löschen\nJa\n",
         cleared,
         {{{RegOpenKeyExA, RegDeleteKeyA}, u"", main + R"(\n)" + file},
          {{RegOpenKeyExA, RegDeleteKeyA}, u"", R"(\n)" + reporting + file},
          {{MessageBoxW}, u"", before},
          {{MessageBoxW}, u"", cleared}}},
        {"Bearbeiten\n", before, {{{ShellExecuteA}, noEditor, before}}}};
    for (const Operation& operation : operations) {
        INFO(operation.input);
        FailEachCallInTurn(operation);
    }
}

TEST_CASE("A full disk or denied deletion changes nothing; programs get their arguments") {
    const FaultMachine machine;
    const std::string before = machine.State();
    ControlFilePath = platform::TextFromAnsi(machine.ControlFile());
    SeamStart({Seam::CreateFileA, 1, platform::StatusDiskFull});
    CHECK(RaisedBy(WriteDemoFile).number == 61);
    SeamStart({Seam::RegDeleteValueA, 1, 5});
    CHECK(RaisedBy([] { ProductProfileMain().Profile.Table->ForcedVersion(true, u"hugo", -1); }).number == 0);
    SeamStop();
    CHECK(machine.State() == before);
    // Error 6 is a run-time error, not status 6, so the system's message for status 6 must not appear.
    SeamStart({Seam::StatusText, 1, 0});
    CHECK(FailureText({6, u"Überlauf"}) == u"Überlauf (Fehler 6)");
    CHECK(machine.Session("Demo\nBearbeiten\nFertig\n").state.ends_with(";[End];"));
    CHECK(SeamStop().started ==
          "65552|open|\"C:\\Users\\hugo\\Eigene Dateien\\vtv4v.txt\"||C:\\Users\\hugo\\Eigene Dateien\\|1|");
    SeamStart();
    ShellAndWait(u"true");
    CHECK(SeamStop().started == "true|2|0|");
}

TEST_CASE("A failing call changes only its own row in the check's report") {
    using enum Seam;
    const FaultMachine machine;
    const std::vector<Text> faultless = Split(ReportUnder({}), u'\n');
    for (const auto& [call, result, row] : {std::tuple<Seam, int, Text>{FindNormalFile, 0, u"*** File not Found ***\r"},
                                            {GetFileVersionInfoSizeA, 0, u"Version(0.0.0.0)"},
                                            {GetFileVersionInfoA, 0, u"Version(0.0.0.0)"},
                                            {VerQueryValueA, 0, u"Version(0.0.0.0)"},
                                            {DateLastModified, 5, u"Release()"},
                                            {CreateObject, 5, u", Test=*** "}}) {
        int changed = 0;
        for (const Text& line : Split(ReportUnder({call, 1, result}), u'\n')) {
            if (std::ranges::count(faultless, line) == 0 && !line.starts_with(u"Error=")) {
                ++changed;
                CHECK(line.find(row) != Text::npos);
            }
        }
        CHECK(changed == 1);
    }
}

TEST_CASE("A failed check is reported even if the clipboard or the window is unavailable") {
    const FaultMachine machine({"sevCmd4.ocx", "VCUTIL1.DebugLog"});
    CHECK(machine.Session("x\n", {Seam::ClipboardSet, 1, 0}).messages == u"check failed");
    CHECK(machine.Session("x\n", {Seam::ClipboardClear, 1, 0}).messages == u"check failed, report copied");
    CHECK(ReportUnder({Seam::StatusText, 1, 0}).find(u", Test=*** erste Zeile zweite Zeile ***\r\n") != Text::npos);
    CHECK(DiskFile(OnMachine("clipboard.txt")) == platform::host::ToUtf8(ReportUnder({})));
    CHECK(machine.Session("OK\n", {Seam::WindowCreate, 1, 0})
              .messages.starts_with(u"48 Kann Programm nicht ausführen:\r\n"));
    InstalledSuiteAdd({});
    DiskFile(OnMachine("components"), "sevDTA30.dll!sevDTA_Init=-1\n");
    CHECK(ReportUnder({}).find(u", Test=*** sevDTA30_Init failed ***\r\n") != Text::npos);
}
