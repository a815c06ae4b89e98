#include <chrono>
#include <cstdlib>
#include <random>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "samples/InstalledSuite.h"

namespace {

const platform::Handle Machine = platform::KeyLocalMachine;
const std::string MainKey = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";
const std::string ReportingKey = "Software\\Vandrel\\Tallora\\V4\\Reporting\\Version\\ForcedVersion";

// A machine on which the suite is installed.
struct SuiteMachine : TestMachine {
    SuiteMachine() { InstalledSuiteAdd({}); }
};

// The program in a process of its own, fed with `input`, for the shell to start: `start` is its way of becoming it.
int Run(const std::string& input, const std::string& arguments = "-master", const std::string& start = {}) {
    MachineFile("typed", input);
    const std::string files = " <'" + OnMachine("typed").native() + "' >'" + OnMachine("shown").native() + "' 2>&1";
    return std::system(("exec " + start + " '" VTV4V_PROGRAM "' " + arguments + files).c_str());
}

// What it shows until it ends as it should.
std::string Shown(const std::string& input, const std::string& arguments = "-master") {
    CHECK(Run(input, arguments) == 0);
    return MachineFile("shown");
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
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
    for (const char* const arguments : {"", "-MASTER", "-master x", "'\"-master\"'"}) {
        CHECK(Shown("Demo\n", arguments).empty());
    }
    CHECK_FALSE(std::filesystem::exists(OnMachine("user.db")));
    CHECK(Contains(Shown("", "' -master '"), "VTV4 Version Controller"));
}

TEST_CASE("Demo, import and clear, from the window to the registry") {
    const SuiteMachine machine;
    Shown("Demo\nImportieren\nJa\nOK\nFertig\n");
    CHECK(RawValueNames(Machine, MainKey) == std::vector<std::string>{"", "hugo", "ruedi"});
    CHECK(RawValue(Machine, MainKey, "") == RawNumber(3));
    CHECK(RawValue(Machine, ReportingKey, "ruedi") == RawNumber(99));
    // A refused question changes nothing.
    CHECK(Contains(Shown("Löschen\nNein\nLöschen\nx\nFertig\n"), "Alle Versions-Einstellungen werden gelöscht."));
    CHECK(RawValueNames(Machine, MainKey).size() == 3);
    Shown("Löschen\nJa\nOK\n");
    CHECK_FALSE(RawKeyExists(Machine, MainKey));
    CHECK_FALSE(RawKeyExists(Machine, ReportingKey));
}

TEST_CASE("An import killed at any moment leaves every entry whole or absent") {
    const SuiteMachine machine;
    constexpr int items = 400;
    constexpr int kills = 200;
    FileContent(machine.ControlFile(), "[Tallora]\r\n" + ItemLines(items));
    RawValueSet(Machine, "Software\\Other", "kept", RawText("whole"));
    std::mt19937 random(4863);  // NOLINT: the same moments at each run
    const auto start = std::chrono::steady_clock::now();
    Shown("Importieren\nJa\nOK\nFertig\n");
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - start;
    std::uniform_real_distribution<double> moment(1e-6, whole.count());
    int cut = 0;
    for (int round = 0; round < kills; ++round) {
        Run("Importieren\nJa\nOK\n", "-master", "timeout --foreground -s KILL " + std::to_string(moment(random)));
        const auto names = RawValueNames(Machine, MainKey);
        cut += !names.empty() && names.size() < items ? 1 : 0;
        for (const std::string& name : names) {
            const unsigned number = static_cast<unsigned>(std::stoul(name.substr(4)));
            REQUIRE(RawValue(Machine, MainKey, name) == RawNumber(number % 6));
        }
        REQUIRE(RawValue(Machine, "Software\\Other", "kept") == RawText("whole"));
    }
    CHECK(cut > 0);
    Shown("Importieren\nJa\nOK\nFertig\n");
    CHECK(RawValueNames(Machine, MainKey).size() == items);
}
