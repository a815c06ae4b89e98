#include "faults/FaultMachine.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <vector>

#include "Check.h"
#include "RawRegistry.h"
#include "app/Main.h"
#include "platform/Process.h"
#include "platform/host/Machine.h"
#include "platform/host/console/FrontEndRun.h"
#include "samples/InstalledSuite.h"

namespace {

namespace fs = std::filesystem;

const std::string MainProduct = "Software\\Vandrel\\Tallora\\V4";
const std::string ReportingProduct = MainProduct + "\\Reporting";
const std::string Table = "\\Version\\ForcedVersion";

// All that the program can tell on its own, and the descriptions that may stand below.
constexpr std::array ToldTexts = {"Fehlgeschlagen!",
                                  "Kann Steuerungs-Datei nicht schreiben:",
                                  "Kann Version File nicht öffnen:",
                                  "Kann Versions-Einstellungen nicht laden:",
                                  "Kann Programm nicht ausführen:",
                                  "Vandrel Core Elements V1",
                                  "Datei nicht gefunden",
                                  "Pfad nicht gefunden",
                                  "Fehler beim Zugriff auf Pfad/Datei",
                                  "Zugriff verweigert",
                                  "Datenträger voll",
                                  "Ein-/Ausgabefehler beim Gerät",
                                  "Nicht genügend Speicher",
                                  "Key not opened: ",
                                  "File not found",
                                  "Path not found",
                                  "Access denied",
                                  "No association for file extension",
                                  "DLL not found",
                                  "Unknown error"};

using Items = std::vector<std::pair<std::string, std::uint32_t>>;

void TableSet(const std::string& product, const Items& items) {
    platform::RegDeleteKeyA(platform::KeyLocalMachine, product + Table);
    for (const auto& [name, version] : items) {
        RawValueSet(platform::KeyLocalMachine, product + Table, name, RawNumber(version));
    }
}

std::string TableText(const std::string& product) {
    std::string text;
    for (const std::string& name : RawValueNames(platform::KeyLocalMachine, product + Table)) {
        const RawData data = RawValue(platform::KeyLocalMachine, product + Table, name).value();
        text += name + "=" + std::to_string(int{data.bytes.at(0)}) + ";";
    }
    return text;
}

long OpenFiles() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

}  // namespace

FaultMachine::FaultMachine(const std::set<std::string>& without) {
    static char name[] = "vtv4v";
    static char option[] = "-master";
    char* arguments[] = {name, option};
    platform::ProcessStart(2, arguments);
    InstalledSuiteAdd(without);
    RawValueSet(platform::KeyCurrentUser, "Software", "", RawText(""));
    RawValueSet(platform::KeyClassesRoot, ".txt", "", RawText("text"));
    RawValueSet(platform::KeyClassesRoot, "text\\shell\\open\\command", "", RawText("true %1"));
    Reset();
    // The first start makes the user's note, which every later one finds.
    Session("Fertig\n");
}

void FaultMachine::Reset() {
    TableSet(MainProduct, {{"", 3}, {"hugo", 0}, {"ruedi", 1}});
    TableSet(ReportingProduct, {{"", 3}, {"hugo", 1}, {"ruedi", 99}});
    FileContent(ControlFile(), Before.file);
}

Outcome FaultMachine::Present(const std::string& told) const {
    std::string file = FileContent(ControlFile()).value_or("no file");
    if (file.starts_with("[Info]") && file.ends_with("\r\n[End]\r\n")) {
        file.erase(0, std::min(file.find("[Tallora]"), file.size()));
    }
    return {told, TableText(MainProduct), TableText(ReportingProduct), file};
}

Outcome FaultMachine::Session(const std::string& input, const SeamFault& fault) {
    const long openFiles = OpenFiles();
    const int openHandles = SeamOpenHandles();
    std::string told;
    {
        const FrontEndRun run(input);
        SeamStart(fault);
        Main();
        SeamStop();
        const std::string output = run.Output();
        for (const char* const text : ToldTexts) {
            told += output.find(text) == std::string::npos ? "" : text + std::string("\n");
        }
    }
    CHECK(OpenFiles() == openFiles);
    CHECK(SeamOpenHandles() == openHandles);
    CHECK(LastError().Number() == 0);
    CHECK(LastError().Description().empty());
    CHECK(FolderClean());
    return Present(told);
}

bool FaultMachine::FolderClean() const {
    const fs::path folder = platform::host::MachineFolder() / "drives/c/Users/hugo/Eigene Dateien";
    return std::distance(fs::directory_iterator(folder), {}) == 1;
}
