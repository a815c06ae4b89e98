#include <chrono>
#include <cstdlib>
#include <random>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "samples/InstalledSuite.h"

namespace {

// The program in a process of its own, for the shell to start: `start` is its way of becoming it.
int Run(const std::string& input, const std::string& arguments = "-master", const std::string& start = {}) {
    DiskFile(OnMachine("typed"), input);
    const std::string files = " <'" + OnMachine("typed").native() + "' >'" + OnMachine("shown").native() + "' 2>&1";
    return std::system(("exec " + start + " '" VTV4V_PROGRAM "' " + arguments + files).c_str());
}

}  // namespace

TEST_CASE("Anything but the one option ends the program without a word") {
    const TestMachine machine;
    for (const char* const arguments : {"", "-MASTER", "-master x", "'\"-master\"'"}) {
        CHECK(Run("", arguments) == 0);
        CHECK(DiskFile(OnMachine("shown")) == "");
    }
    CHECK_FALSE(std::filesystem::exists(OnMachine("user.db")));
    CHECK(Run("", "' -master '") == 0);
    CHECK(DiskFile(OnMachine("shown")) != "");
}

TEST_CASE("An import killed at any moment leaves every entry whole or absent") {
    const platform::Handle root = platform::KeyLocalMachine;
    const std::string key = "Software\\Vandrel\\Tallora\\V4\\Version\\ForcedVersion";
    const std::string input = "Importieren\nJa\nOK\nFertig\n";
    const TestMachine machine;
    InstalledSuiteAdd({});
    constexpr unsigned items = 400;
    std::string file = "[Tallora]\r\n";
    for (unsigned item = 0; item < items; ++item) {
        file += "user" + std::to_string(item) + "=" + std::to_string(item % 6) + "\r\n";
    }
    FileContent(machine.ControlFile(), file);
    std::mt19937 random(4863);  // NOLINT: the same moments at each run
    const auto start = std::chrono::steady_clock::now();
    Run(input);
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - start;
    std::uniform_real_distribution<double> moment(1e-6, whole.count());
    int cut = 0;
    for (int round = 0; round < 200; ++round) {
        Run(input, "-master", "timeout --foreground -s KILL " + std::to_string(moment(random)));
        const auto names = RawValueNames(root, key);
        cut += !names.empty() && names.size() < items ? 1 : 0;
        for (const std::string& name : names) {
            const unsigned number = static_cast<unsigned>(std::stoul(name.substr(4)));
            REQUIRE(RawValue(root, key, name) == RawNumber(number % 6));
        }
    }
    CHECK(cut > 0);
    CHECK(Run(input) == 0);
    CHECK(RawValueNames(root, key).size() == items);
}
