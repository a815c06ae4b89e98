#include <algorithm>
#include <vector>

#include "Check.h"
#include "faults/FaultMachine.h"
#include "platform/Handle.h"

namespace {

using Outcomes = std::vector<Outcome>;

// The outcomes that are right when the call fails for the `occurrence`th time in the operation.
struct Fault {
    Seam call;
    std::vector<std::int64_t> results;
    Outcomes (*right)(const FaultMachine& machine, int occurrence, std::int64_t result);
};

struct Operation {
    std::string input;
    Outcome (*success)(const FaultMachine& machine);
};

const std::string NotWritten = "Kann Steuerungs-Datei nicht schreiben:\n";
const std::string NotLoaded = "Kann Versions-Einstellungen nicht laden:\nKey not opened: \n";
const std::string ImportFailed = "Fehlgeschlagen!\n";

const std::vector<std::string> ImportedMain = {"a=1", "b=2", "c=3"};
const std::vector<std::string> ImportedReporting = {"d=4", "e=5"};

std::string Joined(const std::vector<std::string>& items, std::size_t count, const std::string& end) {
    std::string text;
    for (std::size_t item = 0; item < count; ++item) {
        text += items[item] + end;
    }
    return text;
}

// Behind a list that is not empty stands an empty line.
std::string Listed(const std::vector<std::string>& items, std::size_t count) {
    return Joined(items, count, "\r\n") + (count == 0 ? "" : "\r\n");
}

Outcome Exported(const FaultMachine& machine, std::size_t mainCount, std::size_t reportingCount) {
    Outcome outcome = machine.Before();
    outcome.file = "[Tallora]\r\n" + Listed({"(Standard)=3", "hugo=0", "ruedi=1"}, mainCount) + "[Reporting]\r\n" +
                   Listed({"(Standard)=3", "hugo=1", "ruedi=99"}, reportingCount) + "\r\n[End]\r\n";
    return outcome;
}

// After `count` items of the import; a table that comes later is as before.
Outcome Imported(const FaultMachine& machine, std::size_t count, const std::string& told) {
    Outcome outcome = machine.Before();
    outcome.told = told;
    outcome.main = Joined(ImportedMain, std::min(count, ImportedMain.size()), ";");
    if (count >= ImportedMain.size()) {
        outcome.reporting = Joined(ImportedReporting, count - ImportedMain.size(), ";");
    }
    return outcome;
}

Outcome Cleared(const FaultMachine& machine, bool main, bool reporting) {
    Outcome outcome = machine.Before();
    outcome.main = main ? "" : outcome.main;
    outcome.reporting = reporting ? "" : outcome.reporting;
    return outcome;
}

const Operation Start = {"OK\nFertig\n", [](const FaultMachine& machine) { return machine.Before(); }};
const Operation Export = {"Exportieren\nOK\nFertig\n",
                          [](const FaultMachine& machine) { return Exported(machine, 3, 3); }};
const Operation Import = {"Importieren\nJa\nOK\nFertig\n",
                          [](const FaultMachine& machine) { return Imported(machine, 5, ""); }};
const Operation Clear = {"Löschen\nJa\nOK\nFertig\n",
                         [](const FaultMachine& machine) { return Cleared(machine, true, true); }};
const Operation Edit = {"Bearbeiten\nOK\nFertig\n", [](const FaultMachine& machine) { return machine.Before(); }};
template <const Operation& operation>
Outcomes Unnoticed(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    return {operation.success(machine)};
}

std::string FileErrorText(std::int64_t status) {
    switch (status) {
        case platform::StatusFileNotFound:
            return "Datei nicht gefunden\n";
        case platform::StatusPathNotFound:
            return "Pfad nicht gefunden\n";
        case platform::StatusAccessDenied:
            return "Fehler beim Zugriff auf Pfad/Datei\n";
        case platform::StatusSharingViolation:
            return "Zugriff verweigert\n";
        case platform::StatusDiskFull:
            return "Datenträger voll\n";
        default:
            return "Ein-/Ausgabefehler beim Gerät\n";
    }
}

Outcomes FileKept(const FaultMachine& machine, int /*occurrence*/, std::int64_t result) {
    Outcome outcome = machine.Before();
    outcome.told = NotWritten + FileErrorText(result);
    return {outcome};
}

// The list of the table that could not be read ends before the entry that failed.
Outcomes ListCut(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    Outcomes outcomes;
    for (std::size_t count = 0; count <= 3; ++count) {
        outcomes.push_back(Exported(machine, count, 3));
        outcomes.push_back(Exported(machine, 3, count));
    }
    return outcomes;
}

template <const Operation& operation>
Outcomes EditorRefused(const FaultMachine& machine, int /*occurrence*/, std::int64_t result) {
    Outcome outcome = operation.success(machine);
    outcome.told =
        std::string("Kann Version File nicht öffnen:\n") + (result == 2    ? "File not found\n"
                                                            : result == 3  ? "Path not found\n"
                                                            : result == 5  ? "Access denied\n"
                                                            : result == 31 ? "No association for file extension\n"
                                                            : result == 32 ? "DLL not found\n"
                                                                           : "Unknown error\n");
    return {outcome};
}

Outcomes NothingImported(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    Outcome outcome = machine.Before();
    outcome.told = ImportFailed;
    return {outcome};
}

// Each item is created and set by one call of each kind.
Outcomes ItemsBefore(const FaultMachine& machine, int occurrence, std::int64_t /*result*/) {
    return {Imported(machine, static_cast<std::size_t>(occurrence - 1), ImportFailed)};
}

// An open that failed is tried again behind the creation of its key, or was one that may fail.
Outcomes SomeItems(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    Outcomes outcomes = {Imported(machine, 5, "")};
    for (std::size_t count = 0; count < 5; ++count) {
        outcomes.push_back(Imported(machine, count, ImportFailed));
    }
    return outcomes;
}

Outcomes OneTableStays(const FaultMachine& machine, int occurrence, std::int64_t /*result*/) {
    return {Cleared(machine, occurrence != 1, occurrence != 2)};
}

Outcomes OneTableMayStay(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    return {Cleared(machine, false, true), Cleared(machine, true, false)};
}

Outcomes ToldAtStart(const FaultMachine& machine, const std::vector<std::string>& messages) {
    Outcomes outcomes;
    for (const std::string& told : messages) {
        outcomes.push_back(machine.Before());
        outcomes.back().told = told;
    }
    return outcomes;
}

// A product's folder that is not found fails the check, an entry that is not read is none.
Outcomes CheckMayFail(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    return ToldAtStart(machine, {"", "Vandrel Core Elements V1\n"});
}

Outcomes StartMayFail(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    return ToldAtStart(machine, {"", "Vandrel Core Elements V1\n", NotLoaded});
}

Outcomes NoteRefused(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    return ToldAtStart(machine, {"Kann Versions-Einstellungen nicht laden:\n"});
}

Outcomes WindowRefused(const FaultMachine& machine, int /*occurrence*/, std::int64_t /*result*/) {
    return ToldAtStart(machine, {"Kann Programm nicht ausführen:\nNicht genügend Speicher\n"});
}

// Lets each call that the operation makes behind the program's start fail, one after the other, with each of its
// results; then the same operation has to succeed on what the fault left.
void FailedInTurn(const Operation& operation, const std::vector<Fault>& faults) {
    FaultMachine machine;
    for (const Fault& fault : faults) {
        machine.Reset();
        machine.Session(Start.input);
        const int start = &operation == &Start ? 0 : SeamCalls(fault.call);
        machine.Reset();
        REQUIRE(machine.Session(operation.input) == operation.success(machine));
        const int last = SeamCalls(fault.call);
        INFO(SeamName(fault.call));
        CHECK(last > start);
        for (int occurrence = start + 1; occurrence <= last; ++occurrence) {
            for (const std::int64_t result : fault.results) {
                CAPTURE(occurrence - start);
                CAPTURE(result);
                machine.Reset();
                const Outcome outcome = machine.Session(operation.input, {fault.call, occurrence, result});
                const Outcomes right = fault.right(machine, occurrence - start, result);
                const bool isRight = std::find(right.begin(), right.end(), outcome) != right.end();
                CHECK_MESSAGE(isRight, outcome.told, "| ", outcome.main, "| ", outcome.reporting, "| ", outcome.file);
                CHECK(machine.Session(operation.input) == operation.success(machine));
            }
        }
    }
}

}  // namespace

TEST_CASE("Faults of the start") {
    FailedInTurn(Start, {{Seam::RegOpenKeyExA, {2, 5, 1018}, StartMayFail},
                         {Seam::RegQueryValueExA, {2, 5, 6, 234, 1018}, CheckMayFail},
                         {Seam::RegEnumKeyExA, {5, 6, 234, 259, 1018}, CheckMayFail},
                         {Seam::RegCreateKeyExA, {5, 6, 1018}, NoteRefused},
                         {Seam::RegSetValueExA, {5, 6, 112, 1018}, NoteRefused},
                         {Seam::RegCloseKey, {6}, Unnoticed<Start>},
                         {Seam::WindowCreate, {0}, WindowRefused}});
}

TEST_CASE("Faults of an export") {
    FailedInTurn(Export, {{Seam::RegOpenKeyExA, {2, 5, 1018}, ListCut},
                          {Seam::RegEnumValueA, {5, 6, 234, 259, 1018}, ListCut},
                          {Seam::RegQueryValueExA, {2, 5, 6, 234, 1018}, ListCut},
                          {Seam::RegCloseKey, {6}, Unnoticed<Export>},
                          {Seam::CreateFileA, {2, 3, 5, 32, 112}, FileKept},
                          {Seam::WriteFile, {5, 112, 1117}, FileKept},
                          {Seam::FlushFileBuffers, {112, 1117}, FileKept},
                          {Seam::MoveFileExA, {5, 32, 112}, FileKept},
                          {Seam::CloseHandle, {6}, Unnoticed<Export>},
                          {Seam::ShellExecuteA, {0, 2, 3, 5, 31, 32}, EditorRefused<Export>}});
}

TEST_CASE("Faults of an import") {
    FailedInTurn(Import, {{Seam::CreateFileA, {2, 3, 5, 32}, NothingImported},
                          {Seam::ReadFile, {5, 1117}, NothingImported},
                          {Seam::CloseHandle, {6}, Unnoticed<Import>},
                          {Seam::RegOpenKeyExA, {2, 5, 1018}, SomeItems},
                          {Seam::RegCreateKeyExA, {5, 6, 1018}, ItemsBefore},
                          {Seam::RegSetValueExA, {5, 6, 112, 1018}, ItemsBefore},
                          {Seam::RegDeleteKeyA, {2, 5, 1018}, Unnoticed<Import>},
                          {Seam::RegCloseKey, {6}, Unnoticed<Import>}});
}

TEST_CASE("Faults of clearing") {
    FailedInTurn(Clear, {{Seam::RegOpenKeyExA, {2, 5, 1018}, OneTableMayStay},
                         {Seam::RegDeleteKeyA, {2, 5, 1018}, OneTableStays},
                         {Seam::RegCloseKey, {6}, Unnoticed<Clear>}});
}

TEST_CASE("Faults of editing") {
    FailedInTurn(Edit, {{Seam::ShellExecuteA, {0, 2, 3, 5, 31, 32}, EditorRefused<Edit>}});
}
