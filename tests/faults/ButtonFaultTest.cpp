#include <algorithm>
#include <functional>
#include <map>
#include <vector>

#include "Check.h"
#include "faults/FaultMachine.h"
#include "platform/Handle.h"

namespace {

using Outcomes = std::vector<Outcome>;
// The outcomes that are right when a call fails with `result` for the `occurrence`th time in the operation.
using Right = std::function<Outcomes(int occurrence, std::int64_t result)>;

struct Fault {
    Seam call;
    std::vector<std::int64_t> results;
    Right right;
};

struct Operation {
    std::string input;
    Outcome success;
};

Outcome Told(const std::string& told) {
    Outcome outcome = Before;
    outcome.told = told;
    return outcome;
}

// The first `count` items, each with its end.
std::string First(std::size_t count, const std::vector<std::string>& items, const std::string& end) {
    std::string text;
    for (std::size_t item = 0; item < count; ++item) {
        text += items[item] + end;
    }
    return text;
}

Outcome Exported(std::size_t mainCount, std::size_t reportingCount) {
    // Behind a list that is not empty stands an empty line.
    const auto listed = [](std::size_t count, const std::vector<std::string>& items) {
        return First(count, items, "\r\n") + (count == 0 ? "" : "\r\n");
    };
    Outcome outcome = Before;
    outcome.file = "[Tallora]\r\n" + listed(mainCount, {"(Standard)=3", "hugo=0", "ruedi=1"}) + "[Reporting]\r\n" +
                   listed(reportingCount, {"(Standard)=3", "hugo=1", "ruedi=99"}) + "\r\n[End]\r\n";
    return outcome;
}

// After `count` items of the import; a table that comes later is as before.
Outcome Imported(std::size_t count, const std::string& told = "Fehlgeschlagen!\n") {
    constexpr std::size_t mainCount = 3;
    Outcome outcome = Told(told);
    outcome.main = First(std::min(count, mainCount), {"a=1", "b=2", "c=3"}, ";");
    if (count >= mainCount) {
        outcome.reporting = First(count - mainCount, {"d=4", "e=5"}, ";");
    }
    return outcome;
}

Outcome Cleared(bool main, bool reporting) {
    return {"", main ? "" : Before.main, reporting ? "" : Before.reporting, Before.file};
}

const Operation Start = {"OK\nFertig\n", Before};
const Operation Export = {"Exportieren\nOK\nFertig\n", Exported(3, 3)};
const Operation Import = {"Importieren\nJa\nOK\nFertig\n", Imported(5, "")};
const Operation Clear = {"Löschen\nJa\nOK\nFertig\n", Cleared(true, true)};
const Operation Edit = {"Bearbeiten\nOK\nFertig\n", Before};

Right OneOf(const Outcomes& outcomes) {
    return [outcomes](int /*occurrence*/, std::int64_t /*result*/) { return outcomes; };
}

Outcomes FileKept(int /*occurrence*/, std::int64_t status) {
    const std::map<std::int64_t, std::string> errors = {
        {platform::StatusFileNotFound, "Datei nicht gefunden\n"},
        {platform::StatusPathNotFound, "Pfad nicht gefunden\n"},
        {platform::StatusAccessDenied, "Fehler beim Zugriff auf Pfad/Datei\n"},
        {platform::StatusSharingViolation, "Zugriff verweigert\n"},
        {platform::StatusDiskFull, "Datenträger voll\n"},
        {1117, "Ein-/Ausgabefehler beim Gerät\n"}};
    return {Told("Kann Steuerungs-Datei nicht schreiben:\n" + errors.at(status))};
}

Right EditorRefused(const Operation& operation) {
    return [&operation](int /*occurrence*/, std::int64_t code) {
        const std::map<std::int64_t, std::string> errors = {{0, "Unknown error\n"},
                                                            {2, "File not found\n"},
                                                            {3, "Path not found\n"},
                                                            {5, "Access denied\n"},
                                                            {31, "No association for file extension\n"},
                                                            {32, "DLL not found\n"}};
        Outcome outcome = operation.success;
        outcome.told = "Kann Version File nicht öffnen:\n" + errors.at(code);
        return Outcomes{outcome};
    };
}

// Each item is set by one call.
Outcomes ItemsBefore(int occurrence, std::int64_t /*result*/) {
    return {Imported(static_cast<std::size_t>(occurrence - 1))};
}

// A table's first item creates its key.
Outcomes TablesBefore(int occurrence, std::int64_t /*result*/) {
    return {Imported(occurrence == 1 ? 0 : 3)};
}

Outcomes OneTableStays(int occurrence, std::int64_t /*result*/) {
    return {Cleared(occurrence != 1, occurrence != 2)};
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
        REQUIRE(machine.Session(operation.input) == operation.success);
        const int last = SeamCalls(fault.call);
        INFO(SeamName(fault.call));
        CHECK(last > start);
        for (int occurrence = start + 1; occurrence <= last; ++occurrence) {
            for (const std::int64_t result : fault.results) {
                CAPTURE(occurrence - start);
                CAPTURE(result);
                machine.Reset();
                const Outcome outcome = machine.Session(operation.input, {fault.call, occurrence, result});
                const Outcomes right = fault.right(occurrence - start, result);
                const bool isRight = std::find(right.begin(), right.end(), outcome) != right.end();
                CHECK_MESSAGE(isRight, outcome.told, "| ", outcome.main, "| ", outcome.reporting, "| ", outcome.file);
                CHECK(machine.Session(operation.input) == operation.success);
            }
        }
    }
}

}  // namespace

TEST_CASE("Faults of the start") {
    // A product's folder that is not found fails the check, an entry that is not read is none.
    const std::string checkFailed = "Vandrel Core Elements V1\n";
    const std::string notLoaded = "Kann Versions-Einstellungen nicht laden:\n";
    const Right checkMayFail = OneOf({Before, Told(checkFailed)});
    FailedInTurn(
        Start, {{Seam::RegOpenKeyExA,
                 {2, 5, 1018},
                 OneOf({Before, Told(checkFailed), Told(notLoaded + "Key not opened: \n")})},
                {Seam::RegQueryValueExA, {2, 234}, checkMayFail},
                {Seam::RegEnumKeyExA, {234, 259}, checkMayFail},
                {Seam::RegSetValueExA, {5, 6, 112, 1018}, OneOf({Told(notLoaded)})},
                {Seam::WindowCreate, {0}, OneOf({Told("Kann Programm nicht ausführen:\nNicht genügend Speicher\n")})}});
}

TEST_CASE("Faults of an export") {
    // The list of the table that could not be read ends before the entry that failed.
    Outcomes cut;
    for (std::size_t count = 0; count <= 3; ++count) {
        cut.insert(cut.end(), {Exported(count, 3), Exported(3, count)});
    }
    FailedInTurn(Export, {{Seam::RegOpenKeyExA, {2, 5, 1018}, OneOf(cut)},
                          {Seam::RegEnumValueA, {5, 6, 234, 259, 1018}, OneOf(cut)},
                          {Seam::RegQueryValueExA, {2, 5, 6, 234, 1018}, OneOf(cut)},
                          {Seam::RegCloseKey, {6}, OneOf({Export.success})},
                          {Seam::CreateFileA, {2, 3, 5, 32, 112}, FileKept},
                          {Seam::WriteFile, {5, 112, 1117}, FileKept},
                          {Seam::FlushFileBuffers, {112, 1117}, FileKept},
                          {Seam::MoveFileExA, {5, 32, 112}, FileKept},
                          {Seam::CloseHandle, {6}, OneOf({Export.success})}});
}

TEST_CASE("Faults of an import") {
    // An open that failed is tried again behind the creation of its key, or was one that may fail.
    const Outcomes someItems = {Import.success, Imported(0), Imported(1), Imported(2), Imported(3), Imported(4)};
    const Right nothing = OneOf({Told("Fehlgeschlagen!\n")});
    FailedInTurn(Import, {{Seam::CreateFileA, {2, 3, 5, 32}, nothing},
                          {Seam::ReadFile, {5, 1117}, nothing},
                          {Seam::CloseHandle, {6}, OneOf({Import.success})},
                          {Seam::RegOpenKeyExA, {2, 5, 1018}, OneOf(someItems)},
                          {Seam::RegCreateKeyExA, {5, 6, 1018}, TablesBefore},
                          {Seam::RegSetValueExA, {5, 6, 112, 1018}, ItemsBefore},
                          {Seam::RegDeleteKeyA, {2, 5, 1018}, OneOf({Import.success})},
                          {Seam::RegCloseKey, {6}, OneOf({Import.success})}});
}

TEST_CASE("Faults of clearing and of editing") {
    FailedInTurn(Clear, {{Seam::RegOpenKeyExA, {2, 5, 1018}, OneOf({Cleared(false, true), Cleared(true, false)})},
                         {Seam::RegDeleteKeyA, {2, 5, 1018}, OneTableStays},
                         {Seam::RegCloseKey, {6}, OneOf({Clear.success})}});
    FailedInTurn(Edit, {{Seam::ShellExecuteA, {0, 2, 3, 5, 31, 32}, EditorRefused(Edit)}});
    FailedInTurn(Export, {{Seam::ShellExecuteA, {31}, EditorRefused(Export)}});
}
