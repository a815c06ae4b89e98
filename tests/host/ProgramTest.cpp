#include <chrono>
#include <random>
#include <set>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "host/ProgramRun.h"
#include "installcheck/VcoreTest.h"
#include "samples/InstalledSuite.h"

namespace {

const platform::Handle Machine = platform::KeyLocalMachine;
const std::string MainKey = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";
const std::string ReportingKey = "Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion";

// A machine on which the suite is installed, but for some of its components.
class SuiteMachine : public TestMachine {
public:
    explicit SuiteMachine(const std::set<std::string>& without = {}) { InstalledSuiteAdd(without); }
};

std::string Typed(const std::string& input) {
    const ProgramEnd end = Run({.input = input});
    CHECK(end.exitCode == 0);
    return end.output;
}

bool Shows(const std::string& output, const std::string& text) {
    return output.find(text) != std::string::npos;
}

std::string ItemLines(int count) {
    std::string lines;
    for (int item = 0; item < count; ++item) {
        lines += "user" + std::to_string(item) + "=" + std::to_string(item % 6) + "\r\n";
    }
    return lines;
}

}  // namespace

TEST_CASE("Anything but the one option ends the program without a word") {
    const SuiteMachine machine;
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"-MASTER"}, {"-master", "x"}, {"\"-master\""}, {"-master\t"}}) {
        const ProgramEnd end = Run({.arguments = arguments, .input = "Demo\n"});
        CHECK(end.exitCode == 0);
        CHECK(end.output.empty());
    }
    CHECK_FALSE(std::filesystem::exists(OnMachine("user.reg")));
    CHECK(Shows(Run({.arguments = {" -master "}, .input = ""}).output, "VTV4 Version Controller"));
}

TEST_CASE("The installed suite passes the check") {
    const SuiteMachine machine;
    VcoreTest check;
    const bool passed = check.Ok();
    CAPTURE(check.Text());
    CHECK(passed);
}

TEST_CASE("A missing component is reported, on the clipboard too, and ends the program") {
    const SuiteMachine machine({"sevCmd4.ocx"});
    const std::string output = Typed("?\nx\nDemo\n");
    CHECK(Shows(output, "Vandrel Core Elements V1"));
    CHECK_FALSE(Shows(output, "VTV4 Version Controller\n"));
    CHECK_FALSE(FileContent(machine.ControlFile()));
    const std::string clipboard = MachineFile("clipboard.txt");
    CHECK(
        Shows(clipboard,
              "VB6DE.DLL=Path(C:\\Windows\\System32\\VB6DE.DLL), Version(1.2.3.4), Release(16.12.2017 10:16:40)\r\n"));
    CHECK(Shows(clipboard, "sevCmd4.ocx=Path(C:\\Windows\\System32\\sevCmd4.ocx), *** File not Found ***\r\n"));
    CHECK(clipboard.ends_with("[Status]\r\nError=*** Es fehlen Vandrel Core Elements! ***\r\n"));
}

TEST_CASE("Demo, import, export and clear, from the window to the registry") {
    const SuiteMachine machine;
    Typed("Demo\nImportieren\nJa\nOK\nFertig\n");
    CHECK(RawValueNames(Machine, MainKey) == std::vector<std::string>{"", "hugo", "ruedi"});
    CHECK(RawValue(Machine, MainKey, "") == RawNumber(3));
    CHECK(RawValue(Machine, MainKey, "hugo") == RawNumber(0));
    CHECK(RawValue(Machine, ReportingKey, "ruedi") == RawNumber(99));

    const std::string demonstration = FileContent(machine.ControlFile()).value();
    const std::string noEditor = Typed("1\nOK\nx\n");
    CHECK(Shows(noEditor, "No association for file extension"));
    const std::string exported = FileContent(machine.ControlFile()).value();
    CHECK(exported.substr(exported.find("[Versions]")) == demonstration.substr(demonstration.find("[Versions]")));

    const std::string cleared = Typed("Löschen\nJa\nOK\n");
    CHECK(Shows(cleared, "Alle Versions-Einstellungen werden gelöscht."));
    CHECK_FALSE(RawKeyExists(Machine, MainKey));
    CHECK_FALSE(RawKeyExists(Machine, ReportingKey));

    // A refused question changes nothing.
    Typed("Demo\nImportieren\nJa\nOK\n");
    for (const std::string answer : {"Nein", "Abbrechen", "x"}) {
        const std::string output = Typed("Löschen\n" + answer + "\nFertig\n");
        CHECK_FALSE(Shows(output, "Fehlgeschlagen!"));
        CHECK(RawValueNames(Machine, MainKey).size() == 3);
    }
}

TEST_CASE("What fails is told, and the window stays usable") {
    const SuiteMachine machine;
    const std::string without = Typed("Importieren\nJa\nOK\nBearbeiten\nOK\nFertig\n");
    for (const char* const told : {"Fehlgeschlagen!", "Kann Version File nicht öffnen:", "File not found"}) {
        CHECK(Shows(without, told));
    }

    Typed("Demo\nImportieren\nJa\nOK\n");
    Writable("machine.reg", false);
    CHECK(Shows(Typed("Importieren\nJa\nOK\nFertig\n"), "Fehlgeschlagen!"));
    CHECK_FALSE(Shows(Typed("Löschen\nJa\nOK\nFertig\n"), "Fehlgeschlagen!"));
    CHECK(RawValueNames(Machine, MainKey).size() == 3);

    SuiteMachine elsewhere;
    elsewhere.Environment("HOMEPATH", "\\missing");
    const std::string noFolder = Typed("Demo\nOK\nExportieren\nOK\nFertig\n");
    CHECK(Shows(noFolder, "Kann Steuerungs-Datei nicht schreiben:"));
    CHECK(Shows(noFolder, "C:\\missing\\Eigene Dateien\\vtv4v.txt"));
    CHECK(Shows(noFolder, "Pfad nicht gefunden"));
}

TEST_CASE("A load that fails is told, and the program ends") {
    const SuiteMachine machine;
    Typed("Fertig\n");
    Writable("user.reg", false);
    const std::string output = Typed("OK\nDemo\n");
    CHECK(Shows(output, "Kann Versions-Einstellungen nicht laden:"));
    CHECK(Shows(output, "Key not opened: Software\\Vandrel\\Tallora\\V4"));
    CHECK_FALSE(Shows(output, "VTV4 Version Controller"));
    CHECK_FALSE(FileContent(machine.ControlFile()));
}

TEST_CASE("A full disk leaves the earlier control file") {
    const SuiteMachine machine;
    FileContent(machine.ControlFile(), "[Tallora]\r\n" + ItemLines(1000));
    Typed("Importieren\nJa\nOK\n");
    const std::string earlier = "[Tallora]\r\nedited=1\r\n";
    FileContent(machine.ControlFile(), earlier);
    const ProgramEnd end = Run({.input = "Exportieren\nOK\nFertig\n", .fileSizeLimit = 8192});
    CHECK(end.exitCode == 0);
    CHECK(Shows(end.output, "Datenträger voll"));
    CHECK(FileContent(machine.ControlFile()) == earlier);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(OnMachine("drives/c"))) {
        CHECK(entry.path().extension() != ".tmp");
    }
}

TEST_CASE("Bad control files are imported or refused whole") {
    const SuiteMachine machine;
    std::mt19937 random(20171216);  // NOLINT: the same bytes at each run
    std::string noise(100000, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    const std::string sound = "[Tallora]\r\n" + ItemLines(100000) + "bad\r\nlast=1\r\n";
    struct {
        std::string file;
        bool fails;
    } const cases[] = {
        {noise, false},
        {"[Tallora]\r\n" + std::string(40000, 'a') + "=1\r\n", true},
        {sound, false},
    };
    for (const auto& each : cases) {
        FileContent(machine.ControlFile(), each.file);
        const std::string output = Typed("Importieren\nJa\nOK\n6\n");
        CHECK(Shows(output, "─ Importieren ─"));
        CHECK(Shows(output, "Fehlgeschlagen!") == each.fails);
    }
    CHECK(RawValue(Machine, MainKey, "last") == RawNumber(1));
    CHECK(RawValue(Machine, MainKey, "user99999") == RawNumber(99999 % 6));
}

TEST_CASE("An import killed at any moment leaves every entry whole or absent") {
    const SuiteMachine machine;
    constexpr int items = 400;
    constexpr int kills = 200;
    FileContent(machine.ControlFile(), "[Tallora]\r\n" + ItemLines(items));
    RawValueSet(Machine, "Software\\Other", "kept", RawText("whole"));
    std::mt19937 random(4863);  // NOLINT: the same moments at each run
    const auto start = std::chrono::steady_clock::now();
    Typed("Importieren\nJa\nOK\nFertig\n");
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    std::uniform_int_distribution<unsigned> moment(1, static_cast<unsigned>(whole.count()));
    int cut = 0;
    for (int round = 0; round < kills; ++round) {
        RunAndKill({.input = "Importieren\nJa\nOK\n"}, moment(random));
        const auto names = RawValueNames(Machine, MainKey);
        cut += !names.empty() && names.size() < items ? 1 : 0;
        for (const std::string& name : names) {
            const unsigned number = static_cast<unsigned>(std::stoul(name.substr(4)));
            REQUIRE(RawValue(Machine, MainKey, name) == RawNumber(number % 6));
        }
        REQUIRE(RawValue(Machine, "Software\\Other", "kept") == RawText("whole"));
    }
    CHECK(cut > 0);
    Typed("Importieren\nJa\nOK\nFertig\n");
    CHECK(RawValueNames(Machine, MainKey).size() == items);
}
