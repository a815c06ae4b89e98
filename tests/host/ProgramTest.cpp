#include <chrono>
#include <cstdlib>
#include <random>

#include "Check.h"
#include "RawRegistry.h"
#include "host/MachineFiles.h"
#include "samples/InstalledSuite.h"

namespace {

// Runs the program in its own process, with `input` as standard input. `start` precedes the program's path.
int Run(const std::string& input, const std::string& arguments = "-master", const std::string& start = {}) {
    DiskFile(OnMachine("typed"), input);
    const std::string files = " <'" + OnMachine("typed").native() + "' >'" + OnMachine("shown").native() + "' 2>&1";
    return std::system(("exec " + start + " '" VTV4V_PROGRAM "' " + arguments + files).c_str());
}

}  // namespace

TEST_CASE("With any command line except -master, the program exits without output") {
    const TestMachine machine;
    for (const char* const arguments : {"", "-MASTER", "-master x", "'\"-master\"'"}) {
        CHECK(Run("", arguments) == 0);
        CHECK(DiskFile(OnMachine("shown")) == "");
    }
    CHECK_FALSE(std::filesystem::exists(OnMachine("user.db")));
    CHECK(Run("", "' -master '") == 0);
    CHECK(DiskFile(OnMachine("shown")) != "");
}

TEST_CASE("An import killed at any time leaves every entry either complete or missing") {
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
    std::mt19937 random(4863);  // NOLINT: the fixed seed makes the delays reproducible
    const auto start = std::chrono::steady_clock::now();
    Run(input);
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - start;
    std::uniform_real_distribution<double> delay(1e-6, duration.count());
    int interrupted = 0;
    for (int round = 0; round < 200; ++round) {
        Run(input, "-master", "timeout --foreground -s KILL " + std::to_string(delay(random)));
        const auto names = RawValueNames(root, key);
        interrupted += !names.empty() && names.size() < items ? 1 : 0;
        for (const std::string& name : names) {
            const unsigned number = static_cast<unsigned>(std::stoul(name.substr(4)));
            REQUIRE(RawValue(root, key, name) == RawNumber(number % 6));
        }
    }
    CHECK(interrupted > 0);
    CHECK(Run(input) == 0);
    CHECK(RawValueNames(root, key).size() == items);
}
